#include "workbench/hosting/VariablesChosen.h"

#include <algorithm>
#include <utility>

namespace quillara {

void VariablesChosen::Confirm(int button, TwoLists lists) {
    Open = &Choices[button];
    *Open = {std::move(lists), {}};
}

void VariablesChosen::Show(int caption, std::vector<short> variables) {
    if (Open != nullptr) {
        std::array<int, 2>& captions = Open->Captions;
        auto* const free = std::ranges::find(captions, 0);
        if (free != captions.end() && captions[0] != caption) {
            *free = caption;
        }
    }
    for (auto& [button, choice] : Choices) {
        for (std::size_t list = 0; list < choice.Captions.size(); ++list) {
            if (choice.Captions[list] == caption) {
                choice.Lists[list] = variables;
            }
        }
    }
}

TwoLists VariablesChosen::Of(int button) const {
    const auto found = Choices.find(button);
    return found == Choices.end() ? TwoLists() : found->second.Lists;
}

}  // namespace quillara
