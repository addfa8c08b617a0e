#include "workbench/desktop/scripts/PythonHighlighter.h"

#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>

namespace quillara {
namespace {

/// A text, a comment, a word of the language, a number: whichever begins first.
const QRegularExpression& Token() {
    static const QRegularExpression token(QStringLiteral(
        R"((?<text>[rbf]?("(?:[^"\\]|\\.)*"|'(?:[^'\\]|\\.)*'))|(?<comment>#.*$)|)"
        R"(\b(?<word>and|as|assert|break|class|continue|def|del|elif|else|except|False|finally|for|from|if|import|in|is|)"
        R"(lambda|None|not|or|pass|raise|return|True|try|while|with|yield)\b|\b(?<number>\d[\d._]*(?:e[+-]?\d+)?)\b)"));
    return token;
}

struct TokenColor {
    const char* Name = nullptr;
    QColor Light;  ///< on a light ground
    QColor Dark;
};

}  // namespace

void PythonHighlighter::highlightBlock(const QString& text) {
    static const std::array<TokenColor, 4> colors{{{"text", QColor(0x1A, 0x7F, 0x37), QColor(0x7E, 0xE7, 0x87)},
                                                   {"comment", QColor(0x6E, 0x77, 0x81), QColor(0x8B, 0x94, 0x9E)},
                                                   {"word", QColor(0x8A, 0x3F, 0xC4), QColor(0xD2, 0xA8, 0xFF)},
                                                   {"number", QColor(0x05, 0x50, 0xAE), QColor(0x79, 0xC0, 0xFF)}}};
    constexpr int middle = 128;
    const bool isDark = QGuiApplication::palette().color(QPalette::Base).lightness() < middle;
    auto found = Token().globalMatch(text);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        for (const TokenColor& color : colors) {
            const QString name = QString::fromLatin1(color.Name);
            if (!match.captured(name).isEmpty()) {
                setFormat(static_cast<int>(match.capturedStart(name)), static_cast<int>(match.capturedLength(name)),
                          isDark ? color.Dark : color.Light);
            }
        }
    }
}

}  // namespace quillara
