#include "workbench/recording/RecordedDocuments.h"

namespace quillara {

void RecordedDocuments::Enter(RecordedScript::Line& line, const std::string& what,
                              const std::vector<MadeDocument>& made, bool standAlone) {
    for (std::size_t place = 0; place < made.size(); ++place) {
        Open.insert_or_assign(made[place], Known{&line, what, place, made.size() == 1, standAlone});
    }
}

void RecordedDocuments::Close(const MadeDocument& document) {
    if (const auto node = Open.extract(document)) {
        WriteClose(node.mapped());
    }
}

void RecordedDocuments::CloseRouted() {
    for (auto each = Open.begin(); each != Open.end();) {
        if (each->second.StandsAlone) {
            ++each;
        } else {
            WriteClose(each->second);
            each = Open.erase(each);
        }
    }
}

void RecordedDocuments::WriteClose(const Known& known) {
    std::string& result = known.Line->Result;
    if (result.empty()) {
        result = Script.NameResult(known.What);
    }
    Script.Write(result + (known.IsOnly ? "" : "[" + std::to_string(known.Place) + "]") + ".Close()");
}

}  // namespace quillara
