#include "workbench/formats/TableGathering.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

/// Places and fields that a guess at the kinds is made by.
constexpr std::size_t PlacesOfSample = 16;
constexpr std::size_t FieldsOfSample = 200000;
constexpr std::size_t CasesOfSample = 100;  // at each place

/// All that is kept of distinct numbers by one worker, over all variables.
constexpr std::size_t NumbersOfWorker = 64 * NumberCodes::MostCodes;
constexpr std::size_t FewestNumbersOfColumn = 256;

/// Fields are taken variable by variable, which is quicker than record by record, from records that the processor's
/// nearest memory holds.
constexpr std::size_t FieldsOfRun = 1024;
constexpr std::size_t RecordsOfRun = 64;

/// The kind of a variable by the fields met so far.
FieldKind KindWith(FieldKind kind, std::string_view field, const FieldRules& rules) {
    double value = 0;
    if (kind == FieldKind::Text || rules.IsMissing(field) ||
        (kind == FieldKind::Number && ReadDecimal(field, rules.Decimal(), value) != DecimalOutcome::NoNumber)) {
        return kind;
    }
    if (DaysFromText(field)) {
        return kind == FieldKind::DateTime ? kind : FieldKind::Date;
    }
    return ReadDateTime(field) ? FieldKind::DateTime : FieldKind::Text;
}

}  // namespace

/// What one of the workers has for itself.
struct TableGathering::Worker {
    std::vector<ColumnGatherer> Gatherers;  // by place in the variables of the run
    std::string Window;
    FieldRun Fields;
};

/// What the workers share while they gather some variables.
struct TableGathering::Run {
    std::vector<std::size_t> Variables;
    std::unique_ptr<std::atomic<bool>[]> IsOfOtherKind;  // by place in Variables
    std::vector<Worker> Workers;
    std::atomic<std::size_t> FirstFaultyPart;
};

TableGathering::TableGathering(const TextSource& source, const TextLayout& layout, const FieldRules& rules,
                               const WorkCrew& crew)
    : Source(source),
      Layout(layout),
      Rules(rules),
      Crew(crew),
      Outcomes(layout.Parts.size()),
      Gathered(layout.FirstFields.size()) {}

template <typename Visit>
void TableGathering::VisitSample(Visit visit) const {
    const std::size_t variables = Layout.FirstFields.size();
    const std::size_t places = std::min(PlacesOfSample, Layout.Parts.size());
    const std::size_t most = std::clamp<std::size_t>(FieldsOfSample / PlacesOfSample / variables, 1, CasesOfSample);
    std::string window;
    std::vector<std::string_view> fields;
    for (std::size_t place = 0; place < places; ++place) {
        const std::size_t part = place * Layout.Parts.size() / places;
        PartRecords records(Source, Layout.RecordsOf(Source, part), Layout.RulesOfPart(part), window);
        for (std::size_t i = 0; i < most && records.Next(fields); ++i) {
            for (std::size_t variable = 0; variable < std::min(variables, fields.size()); ++variable) {
                visit(variable, fields[variable]);
            }
        }
    }
}

std::vector<FieldKind> TableGathering::GuessKinds() const {
    std::vector<FieldKind> kinds(Layout.FirstFields.size(), FieldKind::Number);
    VisitSample([&](std::size_t variable, std::string_view field) {
        kinds[variable] = KindWith(kinds[variable], field, Rules);
    });
    return kinds;
}

std::vector<PointUse> TableGathering::GuessPoints() const {
    std::vector<PointUse> uses(Layout.FirstFields.size(), PointUse::None);
    VisitSample([&](std::size_t variable, std::string_view field) {
        uses[variable] = std::max(uses[variable], Rules.IsMissing(field) ? PointUse::None : PointUseOf(field));
    });
    return uses;
}

void TableGathering::Gather(const std::vector<std::size_t>& variables, const std::vector<FieldKind>& kinds) {
    Run run{.Variables = variables,
            .IsOfOtherKind = std::make_unique<std::atomic<bool>[]>(variables.size()),
            .Workers = std::vector<Worker>(Crew.Workers()),
            .FirstFaultyPart = Layout.Parts.size()};
    const std::size_t mostNumbers =
        std::clamp(NumbersOfWorker / variables.size(), FewestNumbersOfColumn, NumberCodes::MostCodes);
    for (const std::size_t variable : variables) {
        Gathered[variable] = {
            .Kind = kinds[variable], .Pieces = std::vector<ColumnPiece>(Layout.Parts.size()), .Workers = {}};
        for (Worker& worker : run.Workers) {
            worker.Fields.Variables = Layout.FirstFields.size();
            worker.Gatherers.emplace_back(kinds[variable], Rules, mostNumbers);
        }
    }
    const std::size_t bytesOfPart = Layout.Parts.empty() ? 0 : Layout.Parts[0].End - Layout.Parts[0].Begin;
    Crew.Do(Layout.Parts.size(), bytesOfPart,
            [&](std::size_t part, std::size_t worker) { GatherPart(run, part, worker); });
    RequireRecordsMeet();
    for (std::size_t i = 0; i < variables.size(); ++i) {
        GatheredColumn& column = Gathered[variables[i]];
        column.IsOfKind = !run.IsOfOtherKind[i];
        for (Worker& worker : run.Workers) {
            worker.Gatherers[i].Close();
            column.Workers.push_back(std::move(worker.Gatherers[i]));
        }
        if (!column.IsOfKind) {
            column.Pieces.clear();
        }
    }
}

void TableGathering::GatherPart(Run& run, std::size_t part, std::size_t worker) {
    if (part > run.FirstFaultyPart) {
        return;
    }
    std::vector<ColumnGatherer>& gatherers = run.Workers[worker].Gatherers;
    for (std::size_t i = 0; i < run.Variables.size(); ++i) {
        if (run.IsOfOtherKind[i]) {
            gatherers[i].PassOver();
        }
    }
    Outcomes[part] = ReadPart(run, part, worker);
    if (Outcomes[part].Fault) {
        std::size_t first = run.FirstFaultyPart;
        while (part < first && !run.FirstFaultyPart.compare_exchange_weak(first, part)) {
        }
    }
    for (std::size_t i = 0; i < run.Variables.size(); ++i) {
        if (gatherers[i].ReadAs() != FieldKind::PassedOver) {
            ColumnPiece& piece = Gathered[run.Variables[i]].Pieces[part];
            piece = gatherers[i].Finish();
            piece.Worker = worker;
        }
    }
}

TableGathering::PartOutcome TableGathering::ReadPart(Run& run, std::size_t part, std::size_t worker) const {
    PartOutcome outcome{.Records = Layout.RecordsOf(Source, part)};
    PartRecords records(Source, outcome.Records, Layout.RulesOfPart(part), run.Workers[worker].Window);
    FieldRun& fields = run.Workers[worker].Fields;
    while (records.Load()) {
        do {
            fields.Clear();
            outcome.Fault = ReadRun(records, fields);
            if (outcome.Fault) {
                return outcome;
            }
            TakeRun(run, worker);
            outcome.Cases += fields.Records();
        } while (fields.Records() > 0);
    }
    outcome.Records.End = std::max(outcome.Records.Begin, records.End());
    return outcome;
}

/// Reads some records, none at the end of what is loaded. Gives what is wrong with one.
std::optional<RecordFault> TableGathering::ReadRun(PartRecords& records, FieldRun& run) const {
    const std::size_t most = std::clamp<std::size_t>(FieldsOfRun / run.Variables, 1, RecordsOfRun);
    while (run.Records() < most && records.Append(run.Fields)) {
        const std::size_t fields = run.Fields.size() - run.Records() * run.Variables;
        if (records.IsEmpty() && run.Variables != 1) {
            run.Fields.pop_back();
            continue;
        }
        if (records.EndsInQuotes() || fields != run.Variables) {
            return RecordFault{.Place = records.Begin(),
                               .Fields = records.EndsInQuotes() ? std::nullopt : std::optional(fields)};
        }
        run.Places.push_back(records.Begin());
    }
    return {};
}

void TableGathering::TakeRun(Run& run, std::size_t worker) {
    Worker& own = run.Workers[worker];
    for (std::size_t i = 0; i < own.Gatherers.size(); ++i) {
        if (!own.Gatherers[i].Take(own.Fields, run.Variables[i])) {
            run.IsOfOtherKind[i] = true;
            own.Gatherers[i].PassOver();
        }
    }
}

// Where a part that was guessed to begin outside quotes, or inside, doesn't, the record before it ends elsewhere.
void TableGathering::RequireRecordsMeet() const {
    std::size_t place = Layout.Parts.empty() ? 0 : Layout.Parts[0].Begin;
    for (std::size_t part = 0; part < Outcomes.size(); ++part) {
        const TextRange& records = Outcomes[part].Records;
        const bool isPassedOver = place >= Layout.Parts[part].End;
        const bool hasNone = records.Begin >= Layout.Parts[part].End;
        if (isPassedOver ? !hasNone : records.Begin != place) {
            throw UnexpectedBytes(UnexpectedBytes::Kind::NotAtRecord);
        }
        if (Outcomes[part].Fault) {
            return;
        }
        place = isPassedOver ? place : records.End;
    }
}

std::optional<RecordFault> TableGathering::FirstFault() const {
    const auto faulty =
        std::ranges::find_if(Outcomes, [](const PartOutcome& outcome) { return outcome.Fault.has_value(); });
    return faulty == Outcomes.end() ? std::nullopt : faulty->Fault;
}

std::size_t TableGathering::Cases() const {
    std::size_t cases = 0;
    for (const PartOutcome& outcome : Outcomes) {
        cases += outcome.Cases;
    }
    return cases;
}

}  // namespace quillara
