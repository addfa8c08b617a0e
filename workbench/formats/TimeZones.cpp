#include "workbench/formats/TimeZones.h"

#include "workbench/data/QuotedText.h"

namespace quillara {

std::optional<Remark> RemarkOnZones(const std::string& variable, const ZonesMet& zones) {
    if (zones.None && (zones.Utc || zones.Shifted)) {
        return Remark{
            "zones-mixed",
            "Some times of " + Quoted(variable) + " have a time zone and others none, which are taken for UTC.",
            "Give all of them a zone, or none."};
    }
    if (!zones.Shifted) {
        return std::nullopt;
    }
    return Remark{"zones-shifted", "The times of " + Quoted(variable) + " have time zones and are shown in UTC.",
                  "Take the zones out of the file to have the times as they stand there."};
}

}  // namespace quillara
