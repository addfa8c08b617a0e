#include "workbench/hosting/WindowCalls.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>
#include <string_view>
#include <utility>

#include "host/Brushing.h"
#include "platform/OwnedVariant.h"
#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/WideText.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

using Argument = std::variant<double, std::string>;

[[noreturn]] void Refuse(const WindowCall& call) {
    throw UsageError("The window call " + Quoted(call.Name) + " isn't known or has other arguments.");
}

int WholeOf(const WindowCall& call, std::size_t place) {
    const double* number = std::get_if<double>(&call.Arguments[place]);
    if (number == nullptr || *number != std::floor(*number) || std::abs(*number) > 1e9) {
        Refuse(call);
    }
    return static_cast<int>(*number);
}

std::string TextOf(const Argument& argument) {
    if (const auto* text = std::get_if<std::string>(&argument)) {
        return *text;
    }
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), std::get<double>(argument)).ptr};
}

double NumberIn(const WindowCall& call, std::size_t place) {
    const std::string text = TextOf(call.Arguments[place]);
    double number = 0.0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || rest != text.data() + text.size()) {
        throw UsageError(Quoted(text) + " isn't a number.");
    }
    return number;
}

void Click(Window& window, const WindowCall& call) {
    window.Click(WholeOf(call, 0));
}

void Select(Window& window, const WindowCall& call) {
    if (const auto* text = std::get_if<std::string>(&call.Arguments[1])) {
        window.ClickText(WholeOf(call, 0), *text);
    } else {
        window.ClickRow(WholeOf(call, 0), WholeOf(call, 1));
    }
}

void DoubleClick(Window& window, const WindowCall& call) {
    window.DoubleClickRow(WholeOf(call, 0), WholeOf(call, 1));
}

void Type(Window& window, const WindowCall& call) {
    const int id = WholeOf(call, 0);
    if (window.At(id).IsNumberField()) {
        window.TypeNumber(id, NumberIn(call, 1));
    } else {
        window.Type(id, TextOf(call.Arguments[1]));
    }
}

/// A row that is selected already can be dragged without another click.
void Drag(Window& window, const WindowCall& call) {
    if (window.At(WholeOf(call, 0)).Selected != WholeOf(call, 1)) {
        window.ClickRow(WholeOf(call, 0), WholeOf(call, 1));
    }
    window.Drag(WholeOf(call, 0), WholeOf(call, 2));
}

void CloseWindow(Window& window, const WindowCall& /*call*/) {
    window.SendCommand(CancelCommand);
}

void RunCommand(Window& window, const WindowCall& call) {
    window.SendCommand(WholeOf(call, 0));
}

struct CallRow {
    std::string_view Name;
    std::size_t Arguments;
    void (*Run)(Window& window, const WindowCall& call);
};

// clang-format off
constexpr std::array<CallRow, 7> Calls{{
    // Name          Arguments Run
    {"click",        1,        Click},
    {"select",       2,        Select},
    {"double_click", 2,        DoubleClick},
    {"text",         2,        Type},
    {"drag",         3,        Drag},
    {"close",        0,        CloseWindow},
    {"command",      1,        RunCommand},
}};
// clang-format on

// In a brushing graph

/// Marks a bar and an option; throws UsageError when one of them isn't there.
bool PickBar(BrushingRun& run, const WindowCall& call) {
    const int bar = WholeOf(call, 0);
    const int option = WholeOf(call, 1);
    if (bar < -1 || bar >= static_cast<int>(run.Regions.Regions().size())) {
        throw UsageError("The brushing graph has no bar " + std::to_string(bar) + ".");
    }
    if (option < 0 || option >= static_cast<int>(run.Options.size())) {
        throw UsageError("The brushing graph has no option " + std::to_string(option) + ".");
    }
    run.Regions.setSelected(bar);
    run.Choice = option;
    return true;
}

bool IsPick(const WindowCall& call) {
    return (call.Name == "pick" && call.Arguments.size() == 2) || (call.Name == "leave" && call.Arguments.empty());
}

// From values of automation

std::span<const VARIANT> ItemsOf(const VARIANT& list) {
    if (!Has(list.Type, VariantType::Array) || Has(list.Type, VariantType::ByReference)) {
        throw UsageError("An answer is a list of window calls, each a list of a name and its arguments.");
    }
    return list.Array == nullptr ? std::span<const VARIANT>()
                                 : std::span(list.Array->Data, list.Array->Bounds[0].Count);
}

WindowCall CallOf(const VARIANT& value) {
    WindowCall call;
    for (const VARIANT& item : ItemsOf(value)) {
        call.Arguments.push_back(WindowArgument(item));
    }
    if (call.Arguments.empty() || !std::holds_alternative<std::string>(call.Arguments.front())) {
        throw UsageError("A window call begins with its name.");
    }
    call.Name = std::get<std::string>(call.Arguments.front());
    call.Arguments.erase(call.Arguments.begin());
    return call;
}

}  // namespace

void RunWindowCall(Window& window, const WindowCall& call) {
    const auto* row = std::ranges::find(Calls, call.Name, &CallRow::Name);
    if (row == Calls.end() || row->Arguments != call.Arguments.size()) {
        Refuse(call);
    }
    row->Run(window, call);
}

Argument WindowArgument(const VARIANT& value) {
    OwnedVariant converted;
    const VariantType type = value.Type == VariantType::Text ? VariantType::Text : VariantType::Real;
    if (!Succeeded(VariantChangeType(*converted.Put(), value, type))) {
        throw UsageError("A window call takes numbers and texts.");
    }
    if (type == VariantType::Text) {
        return NarrowText(ViewOf(converted.Get().Text));
    }
    return converted.Get().Real;
}

ScriptDesk::Answer AnswerOf(const VARIANT& calls) {
    std::vector<WindowCall> all;
    OwnedVariant copy;
    if (!Succeeded(VariantCopyInd(*copy.Put(), calls))) {
        throw UsageError("An answer is a list of window calls.");
    }
    for (const VARIANT& item : ItemsOf(copy.Get())) {
        all.push_back(CallOf(item));
    }
    if (all.size() == 1 && IsPick(all.front())) {
        return ScriptDesk::Pick(
            [pick = std::move(all.front())](BrushingRun& run) { return pick.Name == "pick" && PickBar(run, pick); });
    }
    return ScriptDesk::Work([all = std::move(all)](Window& window) {
        for (const WindowCall& call : all) {
            RunWindowCall(window, call);
        }
    });
}

}  // namespace quillara
