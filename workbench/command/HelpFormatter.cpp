#include "workbench/command/HelpFormatter.h"

#include <sstream>

namespace quillara {
namespace {

constexpr std::size_t NameWidth = 30;
constexpr std::size_t LineWidth = 80;

std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent = "") {
    std::istringstream words(text);
    std::string wrapped;
    std::size_t column = 0;
    for (std::string word; words >> word;) {
        const bool fits = column + 1 + word.size() <= width;
        if (column > 0) {
            wrapped += fits ? " " : "\n" + indent;
            column = fits ? column + 1 : indent.size();
        }
        wrapped += word;
        column += word.size();
    }
    return wrapped;
}

}  // namespace

HelpFormatter::HelpFormatter() {
    column_width(NameWidth);
}

std::string HelpFormatter::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
    std::string help = CLI::Formatter::make_help(app, std::move(name), mode);
    for (std::size_t gap = help.find("\n\n\n"); gap != std::string::npos; gap = help.find("\n\n\n", gap)) {
        help.erase(gap, 1);
    }
    help.erase(help.find_last_not_of('\n') + 1);
    return help + "\n";
}

/// A paragraph a line; one that begins with a blank stands as it is, one with a term at its front is indented.
std::string HelpFormatter::make_footer(const CLI::App* app) const {
    std::istringstream paragraphs(app->get_footer());
    std::string footer;
    for (std::string paragraph; std::getline(paragraphs, paragraph);) {
        const bool hasTerm = paragraph.find(' ') == paragraph.find(':') + 1;
        footer += "\n" + (paragraph.starts_with(' ') ? paragraph : Wrapped(paragraph, LineWidth, hasTerm ? "  " : ""));
    }
    return footer;
}

std::string HelpFormatter::make_option_desc(const CLI::Option* option) const {
    return Wrapped(option->get_description(), LineWidth - NameWidth);
}

}  // namespace quillara
