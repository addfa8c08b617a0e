#pragma once

#include <QCompleter>

#include "workbench/dialogs/FormulaCompletion.h"

class QPlainTextEdit;

namespace quillara {

/// Offers how a formula can go on, below the place where it is typed: whenever a word has begun, and by Ctrl-Space.
class FormulaCompleter : public QCompleter {
    Q_OBJECT

  public:
    /// The table outlives it.
    FormulaCompleter(QPlainTextEdit& edit, const DataTable& table);

    /// Shows what there is to offer at the cursor; hides the list when there is nothing.
    void Offer();
    /// As Offer, where a word or a label has been begun.
    void OfferWhileTyping();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Take(int offer);

    QPlainTextEdit& Edit;
    const DataTable& Table;
    FormulaOffers Offers;
    bool IsTaking = false;
};

}  // namespace quillara
