// Calls of the module on their way to the host. The definitions of a program come before those of its libraries, so
// that the ones here are called, and call the host's.

#include "tests/results/RecordedCalls.h"

#include <dlfcn.h>

#include <cstddef>
#include <cstring>
#include <sstream>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "engine/DrillDown.h"
#include "workbench/hosting/LongTexts.h"

using drilltest::HostAnswers;

namespace {

std::ostringstream TheCalls;
bool Forwarding = false;  // the host's operations may call one another

/// The host's own operation.
template <typename Result, typename... Arguments>
Result Forward(Result (CAnalysisSupport::*own)(Arguments...), CAnalysisSupport& host,
               const std::tuple<std::type_identity_t<Arguments>...>& arguments) {
    void* address = nullptr;
    std::memcpy(&address, &own, sizeof address);
    Dl_info symbol{};
    dladdr(address, &symbol);
    auto* next = reinterpret_cast<Result (*)(CAnalysisSupport*, Arguments...)>(dlsym(RTLD_NEXT, symbol.dli_sname));
    const struct Scope {
        Scope() { Forwarding = true; }
        ~Scope() { Forwarding = false; }
    } scope;
    return std::apply([&](const auto&... each) { return next(&host, each...); }, arguments);
}

/// Fields of a text: 'first,second', without the zeros that pad them; keys as the texts that they stand for.
struct Fields {
    const char* Text;
    int Width;
    int Count = 1;
};

std::ostream& operator<<(std::ostream& out, const Fields& fields) {
    if (fields.Text == nullptr) {
        return out << "null";
    }
    out << '\'';
    for (int field = 0; field < fields.Count; ++field) {
        std::string text(fields.Text + std::ptrdiff_t{field} * fields.Width, static_cast<std::size_t>(fields.Width));
        text.erase(text.find_last_not_of('\0') + 1);
        out << (field == 0 ? "" : ",") << quillara::Replace8CharGrow(text);
    }
    return out << '\'';
}

/// An array of numbers: [1 2 -], "-" where no number was written.
template <typename T>
struct Array {
    Array(const T* items, int count) : Items(items), Count(count) {}

    const T* Items;
    int Count;
};
template <typename T>
Array(T*, int) -> Array<std::remove_const_t<T>>;

template <typename T>
std::ostream& operator<<(std::ostream& out, const Array<T>& array) {
    if (array.Items == nullptr) {
        return out << "null";
    }
    const char* separator = "[";
    for (int item = 0; item < array.Count; ++item) {
        out << std::exchange(separator, " ");
        array.Items[item] != array.Items[item] ? out << '-' : out << +array.Items[item];
    }
    return out << (array.Count == 0 ? "[]" : "]");
}

/// Arguments one behind the other.
template <typename... Arguments>
void Write(const Arguments&... arguments) {
    ((TheCalls << ' ' << arguments), ...);
}

template <typename... Columns>
short NewTable(short (CAnalysisSupport::*own)(int, const char*, int, int, const short*, int, const char*, const char*,
                                              int, const char*, int, std::uint32_t*, Columns...),
               CAnalysisSupport& host, int code, const char* name, int variables, int reserved, const short* list,
               int cases, const char* names, const char* longNames, int longNameWidth, const char* header,
               int caseNameWidth, std::uint32_t* position, Columns... columns) {
    if (!Forwarding) {
        TheCalls << "SubsetAndAddEx";
        Write(code, Fields{name, static_cast<int>(std::strlen(name))}, variables, reserved, Array(list, variables),
              cases, Fields{names, 8, variables}, Fields{longNames, longNameWidth, variables}, longNameWidth,
              Fields{header, 80}, caseNameWidth, *position);
        if constexpr (sizeof...(columns) != 0) {
            const auto& [places, sources, count] = std::tie(columns...);
            Write(Array(places, count), Array(sources, count), count);
        }
        TheCalls << '\n';
    }
    return Forward(own, host,
                   std::tie(code, name, variables, reserved, list, cases, names, longNames, longNameWidth, header,
                            caseNameWidth, position, columns...));
}

}  // namespace

std::string drilltest::TakeCalls() {
    return std::exchange(TheCalls, {}).str();
}

int CAnalysisSupport::cstart(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    const int result = Forward(&CAnalysisSupport::cstart, *this, {caseNumber, values, weighted, weight, tag});
    const int variables = static_cast<const CDrillDown*>(this)->Table.Variables;
    for (int var = 1; HostAnswers::DataShift != 0.0 && var <= variables; ++var) {
        values[var] += HostAnswers::DataShift;
    }
    return result;
}

const char* CAnalysisSupport::GetResourceString(int id) {
    using Operation = const char* (*)(CAnalysisSupport*, int);
    static const auto hosts =
        reinterpret_cast<Operation>(dlsym(RTLD_NEXT, "_ZN16CAnalysisSupport17GetResourceStringEi"));  // it is virtual
    return id == HostAnswers::TranslatedText ? "Translated" : hosts(this, id);
}

void CAnalysisSupport::dsplst(int length, const char* text) {
    using Operation = void (*)(CAnalysisSupport*, int, const char*);
    static const auto hosts = reinterpret_cast<Operation>(dlsym(RTLD_NEXT, "_ZN16CAnalysisSupport6dsplstEiPKc"));
    TheCalls << "dsplst " << length << '\n';
    hosts(this, length, text);
}

short CAnalysisSupport::CorrelationScatterplot(unsigned short flags, int reserved1, short count, const short* variables,
                                               short secondCount, const short* secondVariables,
                                               unsigned short reserved2, const double* reserved3,
                                               const double* reserved4, const char* caseLine, CaseFilter filter,
                                               const std::string& title) {
    TheCalls << "Scatterplots " << flags << ' ' << title << '\n';
    return HostAnswers::Scatterplots ? *HostAnswers::Scatterplots
                                     : Forward(&CAnalysisSupport::CorrelationScatterplot, *this,
                                               {flags, reserved1, count, variables, secondCount, secondVariables,
                                                reserved2, reserved3, reserved4, caseLine, filter, title});
}

int CAnalysisSupport::PutDataF(short table, const void* bytes, std::uint32_t position, int length) {
    return --HostAnswers::WritesUntilRefusal == 0
               ? 1
               : Forward(&CAnalysisSupport::PutDataF, *this, {table, bytes, position, length});
}

void CAnalysisSupport::MatClo(short table) {
    TheCalls << "MatClo " << table << '\n';
    Forward(&CAnalysisSupport::MatClo, *this, {table});
}

void CAnalysisSupport::AbortOutput(short table) {
    TheCalls << "AbortOutput " << table << '\n';
    Forward(&CAnalysisSupport::AbortOutput, *this, {table});
}

short CAnalysisSupport::SubsetAndAddEx(int code, const char* name, int variables, int reserved, const short* list,
                                       int cases, const char* names, const char* longNames, int longNameWidth,
                                       const char* header, int caseNameWidth, std::uint32_t* position) {
    return NewTable(&CAnalysisSupport::SubsetAndAddEx, *this, code, name, variables, reserved, list, cases, names,
                    longNames, longNameWidth, header, caseNameWidth, position);
}

short CAnalysisSupport::SubsetAndAddEx(int code, const char* name, int variables, int reserved, const short* list,
                                       int cases, const char* names, const char* longNames, int longNameWidth,
                                       const char* header, int caseNameWidth, std::uint32_t* position,
                                       const std::int32_t* places, const std::int32_t* sources, int categoricals) {
    return NewTable(&CAnalysisSupport::SubsetAndAddEx, *this, code, name, variables, reserved, list, cases, names,
                    longNames, longNameWidth, header, caseNameWidth, position, places, sources, categoricals);
}

short CAnalysisSupport::looka4(const double* data, const char* text, const signed char* columnFormats,
                               const char* columnNames, const char* columnLongNames, const char* rowNames,
                               const char* title, int rows, int columns, int rowCapacity, int columnCapacity,
                               int headerOffset, int headerCount, int rowNameRoom, int cellRoom, int titleWidth,
                               int titleMode, int firstRow, int rowNameWidth, int columnNameWidth, int cellWidth,
                               int options, int reserved, void* reserved1, void* reserved2, void* header,
                               short* status1, short* status2, short* status3) {
    TheCalls << "looka4";
    Write(Array(data, rows * columns), Fields{text, cellWidth, rows * columns}, Array(columnFormats, columns),
          Fields{columnNames, columnNameWidth, columns}, Fields{columnLongNames, columnNameWidth, columns},
          Fields{rowNames, rowNameWidth, rows}, Fields{title, titleWidth, 3});
    TheCalls << '\n';
    Write(rows, columns, rowCapacity, columnCapacity, headerOffset, headerCount, rowNameRoom, cellRoom, titleWidth,
          titleMode, firstRow, rowNameWidth, columnNameWidth, cellWidth, options, reserved);
    std::uint16_t counts[2];
    std::memcpy(counts, static_cast<const char*>(header) + 12, sizeof counts);
    Write(reserved1 == nullptr ? "null" : "given", reserved2 == nullptr ? "null" : "given", Array(counts, 2), *status1,
          *status2, *status3);
    TheCalls << '\n';
    return Forward(&CAnalysisSupport::looka4, *this,
                   std::tie(data, text, columnFormats, columnNames, columnLongNames, rowNames, title, rows, columns,
                            rowCapacity, columnCapacity, headerOffset, headerCount, rowNameRoom, cellRoom, titleWidth,
                            titleMode, firstRow, rowNameWidth, columnNameWidth, cellWidth, options, reserved, reserved1,
                            reserved2, header, status1, status2, status3));
}

short CAnalysisSupport::NewGeneralMultipleChartLongEx(
    const CChartInfo& info, unsigned short chartFlags, short seriesCount, double** seriesData,
    std::int32_t* pointCounts, std::uint8_t* seriesKinds, std::uint8_t* seriesAttributesB,
    std::uint8_t* seriesAttributesC, std::uint8_t* seriesColors, char** seriesNames, double* seriesWidths,
    const char* title, short titleWidth, short titleLines, const char* xCaption, short xCaptionLength,
    short xCaptionLines, const char* yCaption, short yCaptionLength, short yCaptionLines, double yMin, double yMax,
    double yStep, double xMin, double xMax, double xStep, const char* xScaleText, short xScaleWidth,
    const double* xScaleValues, int xScaleCount, const char* secondXScaleText, short secondXScaleWidth,
    const double* secondXScaleValues, int secondXScaleCount, const char* yScaleText, short yScaleWidth,
    const double* yScaleValues, int yScaleCount, const char* extraScaleText, short extraScaleWidth,
    const double* extraScaleValues, int extraScaleCount, unsigned short optionA, short optionA1, short optionA2,
    unsigned short optionB, short optionB1, short optionB2, unsigned short optionC, short optionC1, short optionC2,
    const char* noteBlock, short noteWidth, std::int32_t* seriesFlags, short pointLabelRows, short pointLabelWidth,
    char** pointLabels) {
    TheCalls << "Chart";
    Write(info.Kind(), chartFlags, seriesCount);
    for (int series = 0; series < seriesCount; ++series) {
        Write(Array(seriesData[series], 2 * pointCounts[series]));
    }
    Write(Array(pointCounts, seriesCount), Array(seriesKinds, seriesCount), Array(seriesAttributesB, seriesCount),
          Array(seriesAttributesC, seriesCount), Array(seriesColors, seriesCount),
          Fields{seriesNames == nullptr || seriesCount == 0 ? nullptr : seriesNames[0], 40},
          Array(seriesWidths, seriesCount));
    TheCalls << "\n12:";
    Write(Fields{title, titleWidth, titleLines}, titleWidth, titleLines, Fields{xCaption, xCaptionLength},
          xCaptionLength, xCaptionLines, Fields{yCaption, yCaptionLength}, yCaptionLength, yCaptionLines, yMin, yMax,
          yStep, xMin, xMax, xStep);
    TheCalls << "\n27:";
    Write(Fields{xScaleText, xScaleWidth, xScaleCount}, xScaleWidth, Array(xScaleValues, xScaleCount), xScaleCount,
          Fields{secondXScaleText, secondXScaleWidth}, secondXScaleWidth, Array(secondXScaleValues, 1),
          secondXScaleCount, Fields{yScaleText, yScaleWidth, yScaleCount}, yScaleWidth,
          Array(yScaleValues, yScaleCount), yScaleCount, Fields{extraScaleText, extraScaleWidth}, extraScaleWidth,
          Array(extraScaleValues, 1), extraScaleCount);
    TheCalls << "\n43:";
    Write(optionA, optionA1, optionA2, optionB, optionB1, optionB2, optionC, optionC1, optionC2, Fields{noteBlock, 400},
          noteWidth, Array(seriesFlags, seriesCount), pointLabelRows, pointLabelWidth,
          seriesCount == 0 ? Fields{nullptr, 0}
                           : Fields{pointLabels[0], pointLabelWidth, pointLabelWidth == 0 ? 0 : pointCounts[0]});
    TheCalls << '\n';
    return Forward(
        &CAnalysisSupport::NewGeneralMultipleChartLongEx, *this,
        std::tie(info, chartFlags, seriesCount, seriesData, pointCounts, seriesKinds, seriesAttributesB,
                 seriesAttributesC, seriesColors, seriesNames, seriesWidths, title, titleWidth, titleLines, xCaption,
                 xCaptionLength, xCaptionLines, yCaption, yCaptionLength, yCaptionLines, yMin, yMax, yStep, xMin, xMax,
                 xStep, xScaleText, xScaleWidth, xScaleValues, xScaleCount, secondXScaleText, secondXScaleWidth,
                 secondXScaleValues, secondXScaleCount, yScaleText, yScaleWidth, yScaleValues, yScaleCount,
                 extraScaleText, extraScaleWidth, extraScaleValues, extraScaleCount, optionA, optionA1, optionA2,
                 optionB, optionB1, optionB2, optionC, optionC1, optionC2, noteBlock, noteWidth, seriesFlags,
                 pointLabelRows, pointLabelWidth, pointLabels));
}
