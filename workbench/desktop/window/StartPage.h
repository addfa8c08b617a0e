#pragma once

#include <QWidget>

class QCommandLinkButton;
class QVBoxLayout;

namespace quillara {

/// What the window shows while no data are open: what to do, the sample, and the files that were open last.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    explicit StartPage(QWidget* parent = nullptr);

    /// Lists files, the last one first.
    void ShowRecent(const QStringList& files);
    /// Offers to go on with what was left; an empty text: nothing was.
    void ShowLeft(const QString& text, const QString& state);
    /// The sample survey, in the source tree or where the program is installed; empty when it isn't there.
    [[nodiscard]] static QString Sample();

  signals:
    void openAsked();
    void fileChosen(const QString& path);
    void restoreAsked();
    void forgetAsked();

  private:
    [[nodiscard]] QWidget& ScrollingPage();
    void AddLeft(QVBoxLayout& column);

    QWidget* Left;
    QCommandLinkButton* GoOn = nullptr;
    QWidget* Recent;
    QVBoxLayout* Rows;
};

}  // namespace quillara
