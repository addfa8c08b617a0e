#include "workbench/exploration/KeptSession.h"

#include <nlohmann/json.hpp>
#include <type_traits>
#include <utility>

#include "resources/ControlIds.h"
#include "workbench/data/Errors.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/ExplorationHistory.h"
#include "workbench/windows/Control.h"

namespace quillara {
namespace {

using Json = nlohmann::json;

constexpr int Version = 1;

Json AsJson(const JournalEntry& entry) {
    Json arguments = Json::array();
    for (const auto& argument : entry.Call.Arguments) {
        std::visit([&](const auto& value) { arguments.push_back(value); }, argument);
    }
    return {{"dialog", entry.Dialog}, {"call", entry.Call.Name}, {"arguments", std::move(arguments)}};
}

JournalEntry EntryFrom(const Json& json) {
    JournalEntry entry{json.at("dialog").get<int>(), {json.at("call").get<std::string>(), {}}};
    for (const Json& argument : json.at("arguments")) {
        if (argument.is_number()) {
            entry.Call.Arguments.emplace_back(argument.get<double>());
        } else {
            entry.Call.Arguments.emplace_back(argument.get<std::string>());
        }
    }
    return entry;
}

Json AsJson(const WindowArrangement& windows) {
    Json places = Json::array();
    for (const WindowPlace& place : windows.Places) {
        places.push_back({place.X, place.Y, place.Width, place.Height});
    }
    return {{"tiled", windows.AreTiled},
            {"tabs", windows.AreTabs},
            {"places", std::move(places)},
            {"front", windows.Front ? Json(*windows.Front) : Json(nullptr)}};
}

WindowArrangement ArrangementFrom(const Json& json) {
    WindowArrangement windows{json.at("tiled").get<bool>(), json.at("tabs").get<bool>()};
    for (const Json& place : json.at("places")) {
        windows.Places.push_back(
            {place.at(0).get<int>(), place.at(1).get<int>(), place.at(2).get<int>(), place.at(3).get<int>()});
    }
    if (const auto front = json.find("front"); front != json.end() && !front->is_null()) {
        windows.Front = front->get<std::size_t>();
    }
    return windows;
}

}  // namespace

bool HasWork(Exploration& exploration) {
    return !exploration.Documents().empty() ||
           (!exploration.HasEnded() &&
            !(exploration.Steps().empty() && exploration.At(DrillDownListControl).Rows.empty()));
}

KeptSession SessionOf(Exploration& exploration, const std::string& file) {
    KeptSession session;
    session.File = file;
    if (!exploration.HasEnded()) {
        session.State = ExplorationHistory::State{exploration.Steps()}.Text();
    }
    for (const CountedPointer<ResultDocument>& document : exploration.Documents()) {
        session.Documents.push_back(document->Name());
    }
    if (!exploration.IsBusy()) {
        session.Script = exploration.Recording().Text();  // the lines of a command come when it is done
    }
    session.Entries = exploration.Recording().Entries();
    return session;
}

std::string SessionText(const KeptSession& session) {
    Json entries = Json::array();
    for (const JournalEntry& entry : session.Entries) {
        entries.push_back(AsJson(entry));
    }
    const Json json = {{"version", Version},
                       {"file", session.File},
                       {"state", session.State},
                       {"documents", session.Documents},
                       {"script", session.Script},
                       {"entries", std::move(entries)},
                       {"windows", AsJson(session.Windows)},
                       {"left", session.WasLeft}};
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

KeptSession SessionFrom(std::string_view text) {
    try {
        const Json json = Json::parse(text);
        if (json.at("version").get<int>() != Version) {
            throw DataError("The session was kept by another version of this program.");
        }
        KeptSession session{json.at("file").get<std::string>(),
                            json.at("state").get<std::string>(),
                            json.at("documents").get<std::vector<std::string>>(),
                            json.at("script").get<std::string>(),
                            {},
                            json.contains("windows") ? ArrangementFrom(json.at("windows")) : WindowArrangement()};
        for (const Json& entry : json.at("entries")) {
            session.Entries.push_back(EntryFrom(entry));
        }
        session.WasLeft = json.value("left", false);
        return session;
    } catch (const Json::exception&) {
        throw DataError("The session that was kept is damaged.");
    }
}

}  // namespace quillara
