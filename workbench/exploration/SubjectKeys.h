#pragma once

#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

namespace quillara {

class ResultDocument;

/// What a document is about: the button that has made it, and its variables. Of two documents of one exploration with
/// the same key one is the later state of the other, whichever of them the analysis has put the newer content into.
struct SubjectKey {
    int Command = 0;
    std::string About{};  ///< its side and variables

    friend bool operator==(const SubjectKey& left, const SubjectKey& right) = default;
    friend bool operator<(const SubjectKey& left, const SubjectKey& right) {
        return std::tie(left.Command, left.About) < std::tie(right.Command, right.About);
    }
};

[[nodiscard]] SubjectKey SubjectKeyOf(const ResultDocument& document);

/// A document that has another content, with the window that it stands in.
struct MovedSubject {
    SubjectKey Subject;
    std::size_t Window = 0;
};

/// A window for each document, by their indexes: the one that has shown its subject, else its own one, else one that is
/// left of the same button. An analysis updates documents by their places, so that subjects move between documents
/// when one of them falls out; a window stays with what it is about. `shown` is what each window has shown; there are
/// at least as many windows of a button as documents of it.
[[nodiscard]] std::vector<std::size_t> WindowsOfSubjects(const std::vector<SubjectKey>& shown,
                                                         const std::vector<MovedSubject>& documents);

}  // namespace quillara
