#include "workbench/exploration/SubjectKeys.h"

#include <utility>

#include "workbench/documents/ResultDocument.h"

namespace quillara {
namespace {

constexpr std::size_t None = static_cast<std::size_t>(-1);

/// Gives windows to documents, each to one.
class Giving {
  public:
    Giving(const std::vector<SubjectKey>& shown, const std::vector<MovedSubject>& documents)
        : Shown(shown), Documents(documents), Given(documents.size(), None), IsTaken(shown.size()) {}

    /// Gives every document that has none the first window left for which a test holds.
    template <typename Suits>
    void Give(Suits suits) {
        for (std::size_t document = 0; document < Documents.size(); ++document) {
            for (std::size_t window = 0; Given[document] == None && window < Shown.size(); ++window) {
                if (!IsTaken[window] && suits(Documents[document], window)) {
                    Given[document] = window;
                    IsTaken[window] = true;
                }
            }
        }
    }
    [[nodiscard]] std::vector<std::size_t> All() && { return std::move(Given); }

  private:
    const std::vector<SubjectKey>& Shown;
    const std::vector<MovedSubject>& Documents;
    std::vector<std::size_t> Given;
    std::vector<bool> IsTaken;
};

}  // namespace

SubjectKey SubjectKeyOf(const ResultDocument& document) {
    const Subject& about =
        std::visit([](const auto& content) -> const Subject& { return content.About; }, document.Content());
    SubjectKey key{document.Origin().Command, std::to_string(static_cast<int>(about.Side))};
    for (const ShownVariable& variable : about.Variables) {
        key.About += ' ' + std::to_string(variable.Number);
    }
    return key;
}

std::vector<std::size_t> WindowsOfSubjects(const std::vector<SubjectKey>& shown,
                                           const std::vector<MovedSubject>& documents) {
    Giving giving(shown, documents);
    giving.Give([&](const MovedSubject& document, std::size_t window) {
        return shown[window] == document.Subject && window == document.Window;
    });
    giving.Give([&](const MovedSubject& document, std::size_t window) { return shown[window] == document.Subject; });
    giving.Give([&](const MovedSubject& document, std::size_t window) { return window == document.Window; });
    giving.Give([&](const MovedSubject& document, std::size_t window) {
        return shown[window].Command == document.Subject.Command;
    });
    return std::move(giving).All();
}

}  // namespace quillara
