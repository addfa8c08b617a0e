#pragma once

#include <QIcon>
#include <QString>

namespace quillara {

class ResultDocument;

/// What a document is in plain words, for windows, tabs and lists: "Histogram of age". Its own title, which the
/// analysis has given, stays as it is.
[[nodiscard]] QString TitleOf(const ResultDocument& document);
/// The same where there is little room: long names are cut in their middle.
[[nodiscard]] QString ShortTitleOf(const ResultDocument& document);
/// A small picture of its kind.
[[nodiscard]] QIcon IconOf(const ResultDocument& document);

}  // namespace quillara
