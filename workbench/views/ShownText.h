#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillara {

/// The text as well-formed UTF-8: a character that is cut off at the end is dropped, as texts of fixed width end so;
/// every other byte that is no part of a character becomes U+FFFD.
[[nodiscard]] std::string ValidText(std::string_view text);

/// The same with an escape (\u202E) for each control character but tabs and line breaks, and for those that turn the
/// direction of the text around them: no text can steer a terminal or stand for another.
[[nodiscard]] std::string UnsteeringText(std::string_view text);

/// One line for people, in well-formed UTF-8: as UnsteeringText gives it, without trailing blanks, with a blank for
/// each tab and line break.
[[nodiscard]] std::string ShownLine(std::string_view text);

/// The lines of a text, each as ShownLine gives it. An empty text is one empty line.
[[nodiscard]] std::vector<std::string> ShownLines(std::string_view text);

/// A line of well-formed UTF-8 as several, none wider than that many columns of a terminal: broken at blanks, and
/// within a word only when it is wider itself. Nothing of it is lost but the blanks where it is broken.
[[nodiscard]] std::vector<std::string> Wrapped(std::string_view line, std::size_t width);

/// How many columns of a terminal a line of well-formed UTF-8 takes.
[[nodiscard]] std::size_t DisplayWidth(std::string_view line);

}  // namespace quillara
