// What automation sees of a result document.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/documents/DocumentFiles.h"
#include "workbench/documents/MemberTable.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/SeriesObject.h"
#include "workbench/documents/Walk.h"

namespace quillara {
namespace {

const std::vector<std::string>& TitleLines(const ResultDocument& document) {
    return document.Graph() != nullptr ? document.Graph()->Title : document.Spreadsheet()->Title;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return text;
}

// Members of every document

void Name(ResultDocument& document, NamedCall& call) {
    call.Give(document.Name());
}

void Title(ResultDocument& document, NamedCall& call) {
    call.Give(Joined(TitleLines(document)));
}

void Kind(ResultDocument& document, NamedCall& call) {
    call.Give(document.Graph() != nullptr ? KindOf(*document.Graph()) : "table");
}

void Saved(ResultDocument& document, NamedCall& call) {
    call.Writes() ? document.SetSaved(call.Boolean(0)) : call.Give(document.IsSaved());
}

void MustBeOpen(bool done) {
    if (!done) {
        throw DataError("This document has been closed.");
    }
}

void Visible(ResultDocument& document, NamedCall& call) {
    call.Writes() ? MustBeOpen(document.SetVisible(call.Boolean(0))) : call.Give(document.IsVisible());
}

void Window(ResultDocument& document, NamedCall& call) {
    call.Give(document.WindowObject());
}

void Activate(ResultDocument& document, NamedCall& /*call*/) {
    MustBeOpen(document.Activate());
}

void Close(ResultDocument& document, NamedCall& /*call*/) {
    document.Close();
}

void Save(ResultDocument& document, NamedCall& call) {
    WriteDocument(document, call.Text(0));
    document.SetSaved(true);
}

// Members of spreadsheets

OwnedVariant ValueOf(const SpreadsheetCell& cell) {
    if (const double* number = std::get_if<double>(&cell)) {
        return OwnedVariant::OfReal(*number);
    }
    const std::string* text = std::get_if<std::string>(&cell);
    return text == nullptr ? OwnedVariant() : quillara::ValueOf(*text);
}

template <typename Part>
std::vector<std::string> NamesOf(const std::vector<Part>& parts) {
    std::vector<std::string> names;
    std::ranges::transform(parts, std::back_inserter(names), &Part::Name);
    return names;
}

void Corner(ResultDocument& document, NamedCall& call) {
    call.Give(document.Spreadsheet()->Corner);
}

void Rows(ResultDocument& document, NamedCall& call) {
    call.Give(static_cast<std::int32_t>(document.Spreadsheet()->Rows.size()));
}

void Columns(ResultDocument& document, NamedCall& call) {
    call.Give(static_cast<std::int32_t>(document.Spreadsheet()->Columns.size()));
}

void RowNames(ResultDocument& document, NamedCall& call) {
    call.Give(ListOf(NamesOf(document.Spreadsheet()->Rows)));
}

void ColumnNames(ResultDocument& document, NamedCall& call) {
    call.Give(ListOf(NamesOf(document.Spreadsheet()->Columns)));
}

void Cell(ResultDocument& document, NamedCall& call) {
    const SpreadsheetDocument& table = *document.Spreadsheet();
    const SpreadsheetRow& row = table.Rows[call.Index(0, table.Rows.size())];
    call.Give(ValueOf(row.Cells[call.Index(1, row.Cells.size())]));
}

OwnedVariant CellsOf(const SpreadsheetRow& row) {
    std::vector<OwnedVariant> cells;
    std::ranges::transform(row.Cells, std::back_inserter(cells), ValueOf);
    return ListOf(std::move(cells));
}

void Values(ResultDocument& document, NamedCall& call) {
    std::vector<OwnedVariant> rows;
    std::ranges::transform(document.Spreadsheet()->Rows, std::back_inserter(rows), CellsOf);
    call.Give(ListOf(std::move(rows)));
}

// Members of graphs

void SeriesCount(ResultDocument& document, NamedCall& call) {
    call.Give(static_cast<std::int32_t>(NumbersOf(*document.Graph()).size()));
}

void Series(ResultDocument& document, NamedCall& call) {
    std::vector<NamedNumbers> all = NumbersOf(*document.Graph());
    const auto series = CountedPointer<IDispatch>::Adopt(new SeriesObject(std::move(all[call.Index(0, all.size())])));
    call.Give(series.Get());
}

template <GraphAxis SeriesChart::*Axis>
void Caption(ResultDocument& document, NamedCall& call) {
    const SeriesChart* chart = SeriesOf(*document.Graph());
    call.Give(chart == nullptr ? std::string() : (chart->*Axis).Caption);
}

/// Serves a document that hasn't gone.
template <void (*Serve)(ResultDocument&, NamedCall&)>
void ServeOpen(ResultDocument& document, NamedCall& call) {
    if (document.IsGone()) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    Serve(document, call);
}

template <void (*Serve)(ResultDocument&, NamedCall&)>
constexpr auto Of = RunFor<ResultDocument, ServeOpen<Serve>>;

// clang-format off
constexpr std::array<MemberRow, 9> CommonMembers{{
    // Name           Number Uses                 Arguments Value                 Run                           Help
    {u"Name",         0,     DispatchPropertyGet, 0, 0,     VariantType::Text,    Of<Name>,                     "The first line of the title"},
    {u"Saved",        1,     ReadAndWrite,        0, 0,     VariantType::Boolean, Of<Saved>,                    "Whether the document is saved, or isn't worth it"},
    {u"Visible",      2,     ReadAndWrite,        0, 0,     VariantType::Boolean, Of<Visible>,                  "Whether it stands in a window"},
    {u"Window",       3,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Window>,                  "Its window"},
    {u"Activate",     4,     DispatchMethod,      0, 0,     VariantType::Empty,   Of<Activate>,                 "Brings its window to the front"},
    {u"Title",        5,     DispatchPropertyGet, 0, 0,     VariantType::Text,    Of<Title>,                    "All lines of the title"},
    {u"Kind",         6,     DispatchPropertyGet, 0, 0,     VariantType::Text,    Of<Kind>,                     "What it is: table, histogram, pie chart, ..."},
    {u"Close",        7,     DispatchMethod,      0, 0,     VariantType::Empty,   RunFor<ResultDocument, Close>, "Closes it for good; again changes nothing"},
    {u"Save",         8,     DispatchMethod,      1, 1,     VariantType::Empty,   Of<Save>,                     "Writes it to a file, as the ending of the path says"},
}};

constexpr std::array<MemberRow, 7> OwnSpreadsheetMembers{{
    {u"Corner",       20,    DispatchPropertyGet, 0, 0,     VariantType::Text,    Of<Corner>,                   "The text above the names of the rows"},
    {u"Rows",         21,    DispatchPropertyGet, 0, 0,     VariantType::Integer, Of<Rows>,                     "The number of rows"},
    {u"Columns",      22,    DispatchPropertyGet, 0, 0,     VariantType::Integer, Of<Columns>,                  "The number of columns"},
    {u"RowNames",     23,    DispatchPropertyGet, 0, 0,     VariantType::Variant, Of<RowNames>,                 "The names of the rows"},
    {u"ColumnNames",  24,    DispatchPropertyGet, 0, 0,     VariantType::Variant, Of<ColumnNames>,              "The names of the columns"},
    {u"Cell",         25,    DispatchPropertyGet, 2, 2,     VariantType::Variant, Of<Cell>,                     "The value at a row and a column, each from 1"},
    {u"Values",       26,    DispatchPropertyGet, 0, 0,     VariantType::Variant, Of<Values>,                   "All values, a list a row"},
}};

constexpr std::array<MemberRow, 4> OwnGraphMembers{{
    {u"SeriesCount",  40,    DispatchPropertyGet, 0, 0,     VariantType::Integer,  Of<SeriesCount>,              "The number of series"},
    {u"Series",       41,    DispatchPropertyGet, 1, 1,     VariantType::Dispatch, Of<Series>,                   "The series at a place from 1"},
    {u"XCaption",     42,    DispatchPropertyGet, 0, 0,     VariantType::Text,     Of<Caption<&SeriesChart::X>>, "The caption of the horizontal axis"},
    {u"YCaption",     43,    DispatchPropertyGet, 0, 0,     VariantType::Text,     Of<Caption<&SeriesChart::Y>>, "The caption of the vertical axis"},
}};
// clang-format on

template <std::size_t Common, std::size_t Own>
constexpr std::array<MemberRow, Common + Own> Both(const std::array<MemberRow, Common>& common,
                                                   const std::array<MemberRow, Own>& own) {
    std::array<MemberRow, Common + Own> all{};
    std::ranges::copy(own, std::ranges::copy(common, all.begin()).out);
    return all;
}

constexpr auto SpreadsheetMembers = Both(CommonMembers, OwnSpreadsheetMembers);
constexpr auto GraphMembers = Both(CommonMembers, OwnGraphMembers);
constexpr ObjectKind SpreadsheetObject{u"Spreadsheet", "A table of results", SpreadsheetKind.Document,
                                       SpreadsheetMembers};
constexpr ObjectKind GraphObject{u"Graph", "A graph of results", GraphKind.Document, GraphMembers};

}  // namespace

HRESULT ResultDocument::QueryInterface(const GUID& id, void** object) {
    *object = nullptr;
    if (void* face = Faces.Find(id)) {
        *object = face;
    } else if (id == IUnknown::Id || id == IDispatch::Id || id == Kind().Document) {
        *object = static_cast<IDispatch*>(this);
    } else if (id == IConnectionPointContainer::Id) {
        *object = static_cast<IConnectionPointContainer*>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

HRESULT ResultDocument::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return MakeWalk(points, std::vector{CountedPointer<IConnectionPoint>::Share(&Point)});
}

HRESULT ResultDocument::FindConnectionPoint(const GUID& events, IConnectionPoint** point) {
    *point = nullptr;
    if (events != Kind().Events) {
        return CONNECT_E_NOCONNECTION;
    }
    *point = &Point;
    AddRef();
    return S_OK;
}

const ObjectKind& ResultDocument::MembersOf() const {
    return Graph() != nullptr ? GraphObject : SpreadsheetObject;
}

void* ResultDocument::ServedObject() {
    return this;
}

std::string ResultDocument::Name() const {
    const std::vector<std::string>& lines = TitleLines(*this);
    return lines.empty() ? std::string() : lines.front();
}

}  // namespace quillara
