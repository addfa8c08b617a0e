#pragma once

#include <QWidget>
#include <cstddef>
#include <vector>

class QVBoxLayout;

namespace quillara {

/// What the window shows while no data are open: what to do, the sample, and the files that were open last.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    /// A session that was left: its data, and how it stands.
    struct LeftRow {
        QString File;
        QString State;
    };

    explicit StartPage(QWidget* parent = nullptr);

    /// Lists files, the last one first.
    void ShowRecent(const QStringList& files);
    /// Offers to go on with what was left.
    void ShowLeft(const std::vector<LeftRow>& rows);
    /// The sample survey, in the source tree or where the program is installed; empty when it isn't there.
    [[nodiscard]] static QString Sample();

  signals:
    void openAsked();
    void fileChosen(const QString& path);
    /// Of a row of those that were left.
    void restoreAsked(std::size_t row);
    void forgetAsked(std::size_t row);

  private:
    [[nodiscard]] QWidget& ScrollingPage();
    void AddLeft(const LeftRow& left, std::size_t row);

    QWidget* Left;
    QVBoxLayout* LeftRows;
    QWidget* Recent;
    QVBoxLayout* Rows;
};

}  // namespace quillara
