#pragma once

#include <QWidget>

class QVBoxLayout;

namespace quillara {

/// What the window shows while no data are open: what to do, the sample, and the files that were open last.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    explicit StartPage(QWidget* parent = nullptr);

    /// Lists files, the last one first.
    void ShowRecent(const QStringList& files);
    /// The sample survey, in the source tree or where the program is installed; empty when it isn't there.
    [[nodiscard]] static QString Sample();

  signals:
    void openAsked();
    void fileChosen(const QString& path);

  private:
    QWidget* Recent;
    QVBoxLayout* Rows;
};

}  // namespace quillara
