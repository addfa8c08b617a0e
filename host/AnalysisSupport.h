#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/Charts.h"
#include "host/Commons.h"
#include "host/ResultSubject.h"
#include "platform/Handles.h"

class CAnalysisContext;
class CAnalysisDoc;
class CAnalysisModelessDialog;
class CAnalysisSupport;
class CaseBlocks;
class CaseConditions;
class ParallelRuns;
class TableColumns;
struct ActiveCommand;
struct AnalysisBinding;
struct CaseCondition;
struct ModuleInstance;

/// One step of the sequence that the host runs through when an analysis starts. A step that gives 0 ends it.
struct SequenceStep {
    int Id;
    int (CAnalysisSupport::*Function)();
    int NextId;  ///< 0: the sequence ends here
};

/// Base of all analyses: the services of the host, by family. The host implements it; a module derives its
/// analysis from it. All calls are made from the host's one user-interface thread. Variable numbers and case
/// numbers count from 1 unless a call says otherwise. Calls without a stated failure succeed; none throws, but for an
/// allocation failure of the language where a call makes texts.
class CAnalysisSupport {
  public:
    /// `document` is the host's owner of the analysis and may be null until the host binds it; `context` outlives
    /// the analysis.
    CAnalysisSupport(CAnalysisDoc* document, const CAnalysisContext& context);
    CAnalysisSupport(const CAnalysisSupport&) = delete;
    CAnalysisSupport& operator=(const CAnalysisSupport&) = delete;

    // What an analysis may override, in the order of the slots.

    virtual ~CAnalysisSupport();
    /// First step of every sequence: makes the analysis ready for the table that is open. 0 on failure.
    virtual int InitializeAfterFileChanged();
    virtual void Initialize();
    /// Whether the sequence may go on from one step to another.
    virtual bool ForwardSequence(int from, int to) const;
    /// The module that the analysis belongs to.
    virtual const ModuleInstance* GetLibInstance();
    /// A text of the module's string table, owned by the module; "" for an unknown id.
    virtual const char* GetResourceString(int id);
    virtual int GetAnalysisID();
    /// Shows a message to the user and returns when it has been dismissed. `length` is the text's length or 0.
    virtual void dsplst(int length, const char* text);
    virtual std::string GetAnalysisName() const;
    /// Asked before a result document goes to its output target. The host gives a reference with the document; true:
    /// the analysis has taken both and lets the reference go; false: the reference is still the host's. An analysis
    /// that has taken a document holds none: the host keeps the document alive until it has announced that it closes,
    /// or the analysis has had it forgotten and hidden.
    virtual bool BeforeRouteOutput(IDispatch* document);
    virtual void BeforeClose();
    /// Optional, for hosts that tell what remains: gives the conditions of the steps in force, by which the passes go;
    /// none where no step is. False when there is no memory, and for an analysis that has no steps.
    virtual bool FindStepConditions(std::vector<CaseCondition>& /*conditions*/) { return false; }

    // Start and memory

    /// Gives the host the steps of the analysis. The table is not copied and outlives the analysis.
    void SetSequenceTable(const SequenceStep* table, int rows);
    /// Binds the structures that the host shares with the analysis and fills the fields that the host writes.
    void InitCommons(OrvTag* table, Orv88Tag* names, b1_com* line, Wght_com* weight, _AddMenu* menu);
    /// Gives zeroed memory, also for a size of 0. Returns 0 on success, non-zero when there is none; then *address is
    /// null.
    int AllocMem(void** address, unsigned long size);
    /// Takes back an address from AllocMem; not null.
    void FreeMem(void* address);
    /// Non-zero while a script drives the analysis.
    int IsOleAutomation() const;

    // Variables and labels

    /// Writes the short name of a variable, at most 8 bytes and a zero; a longer name as its key.
    void getvn5(int variable, char* name);
    /// Writes the long name, cut to 127 bytes and a zero; empty when there is none.
    void WriteVarLongName(char* text, int variable);
    /// Writes the code that stands for missing data in a variable.
    void getmd5(int variable, double* code);
    /// 0 when the value has a label, which then stands in `text` as 8 bytes padded with blanks, without a zero;
    /// a longer label as its key. Non-zero, and nothing written, when it has none.
    int vvlcod(int mode, int variable, char* text, const float* value);
    /// Non-zero when the variable has a display format of its own, as dates and times have.
    int IsSpecialFormatVariable(int variable);
    /// Writes a value in the variable's own format, at most `width` bytes and a zero.
    void WriteSpecialFormatVariable(int variable, double value, char* text, int width);
    /// Non-zero when the value has a long label (a description), whose key then stands in `text` (9 bytes).
    /// `variableIndex` is the variable number less 1.
    int RetrieveLongTextLabelAsHashedString(char* text, int variableIndex, double value);
    /// Replaces a text of more than 8 bytes by its 8-byte key; leaves shorter ones as they are.
    void Get8CharHash(std::string& text);
    /// Replaces a key by the text that it stands for; leaves other texts as they are.
    void ExpandPossible8CharHash(std::string& text);
    /// Removes the host's formatting marks.
    void StripFormatting(std::string& text);
    /// Replaces every key of a long text, anywhere inside a text, by the text that it stands for. Analyses give true.
    void Replace8CharGrow(std::string& text, bool nested);

    // Cases

    /// Reads one case. Returns 0: a case to use; 1: a case to skip, it lies outside the selection; 2: stop the pass.
    /// For 0 and 1 fills `values`, indexed by variable number (entry 0 is spare), and the three outputs.
    int cstrtw(int caseNumber, double* values, int* weighted, double* weight, int* tag);
    /// The same for reading the cases as data: what the module writes of a case comes from here.
    int cstart(int caseNumber, double* values, int* weighted, double* weight, int* tag);
    /// Writes the value of a cell as it is stored; variable and case count from 0, and both exist.
    void ReadTableValue(int variableIndex, int caseIndex, double* value);
    /// The name of a case, counted from 0.
    std::string GetCaseName(int caseIndex);
    /// The host's columns, or null when the host offers none. Owned by the host, valid while the table is open.
    CaseBlocks* GetCaseBlocks();
    /// The host's whole columns in their narrow form, in place of blocks; null and owned as above.
    TableColumns* GetTableColumns();
    /// The host's answers to which cases meet conditions; null and owned as above. Asked only where cases come in whole
    /// columns or in blocks.
    CaseConditions* GetCaseConditions();
    /// The host's threads; null and owned as above. Asked only where cases come in whole columns.
    ParallelRuns* GetParallelRuns();
    /// A number that was never given before whenever reading the cases may give anything else than before: another
    /// table, selection, weight, missing code. 0: the host doesn't say, and an analysis remembers nothing. Asked only
    /// where the host has whole columns; when a pass begins and when it has ended, and what it counted is remembered if
    /// the two are the same.
    std::uint64_t GetCaseRevision();

    // Break and progress

    /// Non-zero when the user asked to cancel.
    int lookbr();
    void d_pbar(const char* text);
    void dstart(unsigned long total);
    void dstop();

    // New data tables. A table is written as a stream of rows: the case name (none without case names), then the value
    // of each variable as a double, all without gaps.

    /// Begins a table of `variables` variables for about `cases` cases and gives its handle; 0 when it can't.
    ///   list           numbers of the input variables that the new ones come from, one each; 0: from none
    ///   names          8 bytes a variable, not terminated when full
    ///   longNames      `longNameWidth` bytes a variable
    ///   header         80 bytes, the header text of the new table
    ///   caseNameWidth  bytes of a case name in a row, 0: no case names
    ///   position       the write position of the stream, set to 0
    /// Analyses give code 25, an empty name, reserved 0 and longNameWidth 128.
    short SubsetAndAddEx(int code, const char* name, int variables, int reserved, const short* list, int cases,
                         const char* names, const char* longNames, int longNameWidth, const char* header,
                         int caseNameWidth, std::uint32_t* position);
    /// The same with the categorical variables among them: their places in the list, and the numbers, less 1, of the
    /// input variables, `categoricals` of each.
    short SubsetAndAddEx(int code, const char* name, int variables, int reserved, const short* list, int cases,
                         const char* names, const char* longNames, int longNameWidth, const char* header,
                         int caseNameWidth, std::uint32_t* position, const std::int32_t* places,
                         const std::int32_t* sources, int categoricals);
    /// Writes bytes at a position of the stream, which is where the last write ended (modulo 2^32). 0 on success.
    int PutDataF(short table, const void* bytes, std::uint32_t position, int length);
    /// Finishes a table; it is the host's from now on.
    void MatClo(short table);
    /// Drops an unfinished table; of a handle that is none, nothing.
    void AbortOutput(short table);

    // Settings that outlive the analysis

    /// Reads a setting of the module into *value; one never written is 0. `section` is 0, `reserved` points to a 0.
    void GetInitKeyword(int section, const char* key, const std::int32_t* reserved, std::int32_t* value);
    void PutInitKeyword(int section, const char* key, const std::int32_t* reserved, const std::int32_t* value);

    // Result documents and commands

    /// Says what the next table or chart handed over is about. The host forgets it with that result, made or not.
    void SetResultSubject(ResultSubject subject);
    /// Moves the content of a new document into the window of an old one; true when done. The new one is then empty.
    bool ReplaceContentOfDoc(IDispatch* old, IDispatch* fresh);
    /// The message of the startup dialog that runs now; null when none does.
    ActiveCommand* GetActiveCommand();
    /// The startup dialog of the analysis; null when there is none.
    CAnalysisModelessDialog* GetStartupDialog();
    /// The window of the startup dialog; null when there is none.
    HWND GetStartupWindow();
    /// The host's owner of the analysis; null until it is bound.
    CAnalysisDoc* GetDocument();

    // Dialogs and results

    /// Lets the user fill two lists of variables from all, or from those of `preset`, which a 0 ends; at the start the
    /// lists hold what `list1` and `list2` do. The five limits are the lowest and highest number of entries of
    /// the first list, the same of the second, and the highest of both together. `list1` and `list2` have room
    /// for one entry per variable; lists and counts are written on OK only. Returns 0 for cancel.
    int DoubleVarListDialog(HWND owner, unsigned short mode, const char* title, short* preset, int lowest1,
                            int highest1, int lowest2, int highest2, int highestTotal, short* list1, short* count1,
                            short* list2, short* count2, const char* label1, const char* label2,
                            unsigned short typeCount, int* types, int reserved1, int reserved2);

    /// Shows a spreadsheet of `rows` x `columns` cells and gives a status. The host copies what it needs, the corner
    /// label of the OrvTag too, before it returns.
    ///
    /// Arrays of cells lie column by column: the cell of row r and column c, from 0, stands at c x `rows` + r. Texts
    /// stand in fields of fixed width, padded with zero bytes; a full field has no zero at its end, and a cut may have
    /// left its last character or key unfinished. The host shows the long texts that keys in a field stand for.
    ///   data             the numbers; a cell whose 8 bytes are all 0xFF has none
    ///   text             the text cells, `cellWidth` bytes each; a cell shows its text, or, if it is empty, its number
    ///   columnFormats    a byte a column: 0, numbers in the default display; minus `cellWidth`, all numbers are whole
    ///                    and shown so; -100 (156 unsigned), the column has at least one text cell
    ///   columnNames      `columnNameWidth` bytes a column; line feeds may stand in the long text of a name
    ///   columnLongNames  second names in fields as above, empty for most spreadsheets
    ///   rowNames         `rowNameWidth` bytes a row
    ///   title            three lines of `titleWidth` bytes: title, subset, and one that stays empty
    ///   header           a block for the host's own use, columns + 16 + (columns + 1) x (rows + 1) / 8 bytes; the low
    ///                    16 bits of `rows` stand at byte 12, those of `columns` at byte 14
    /// Of the numbers, `rowCapacity` and `columnCapacity` repeat `rows` and `columns`; `rowNameRoom` and `cellRoom` are
    /// `rowNameWidth` and `cellWidth` + 2; an analysis always gives titleWidth 80, columnNameWidth 8, cellWidth 8,
    /// headerOffset 16, headerCount 6, titleMode 1, firstRow 0, options 0x2401 and reserved 0. A host needs no more
    /// than the sizes and widths. `reserved1` and `reserved2` are null. The statuses come in as 0, 1 and 1; the host
    /// may write them, and no analysis looks at them.
    short looka4(const double* data, const char* text, const signed char* columnFormats, const char* columnNames,
                 const char* columnLongNames, const char* rowNames, const char* title, int rows, int columns,
                 int rowCapacity, int columnCapacity, int headerOffset, int headerCount, int rowNameRoom, int cellRoom,
                 int titleWidth, int titleMode, int firstRow, int rowNameWidth, int columnNameWidth, int cellWidth,
                 int options, int reserved, void* reserved1, void* reserved2, void* header, short* status1,
                 short* status2, short* status3);

    // Charts that are handed over

    /// Makes one chart of `seriesCount` series and gives 0; 1 when it can't. The host copies what it needs before it
    /// returns. Texts in fields of fixed width are padded with zero bytes and not terminated when full; the host shows
    /// the long texts that keys in them stand for.
    ///   seriesData       a block a series: the x values, then the y values from index pointCounts[series] on; a number
    ///                    of which all bytes are 0xFF was never written
    ///   pointCounts      points in use of each series
    ///   seriesKinds      see SeriesKind
    ///   seriesColors     see ChartColor
    ///   seriesWidths     width of a bar in units of the x axis
    ///   seriesNames      40 bytes each, or null
    ///   title            `titleLines` lines of `titleWidth` bytes
    ///   captions         with the length of each and 1 line
    ///   axes             lowest, highest and step of y, then of x
    ///   scales           texts of an axis: fields of a width, positions, count;
    ///                    of x, none, of y, none.
    ///                    Slot 0 of the x axis is unused when the first label belongs to position 1
    ///   options          three triples of option words
    ///   pointLabelRows   1: each series has labels of its points, fields of `pointLabelWidth` bytes; 0: none
    short NewGeneralMultipleChartLongEx(
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
        char** pointLabels);

    // Plots that the host computes from the cases, in one read of the columns that they need. The filter is asked for
    // every case of the table unless the host tests the conditions of the filter itself. All give 0 when the plot was
    // made, 1 when it wasn't.

    /// Says what the filters of the plots that follow come to: they keep the cases that meet all these conditions, and
    /// the two values of a case that is kept are those of the two variables of the plot, in single precision. A host
    /// may test the conditions itself in place of calling the filter. They outlive the plots; null ends that, and then,
    /// as before the first call, only the filters themselves say which cases are kept.
    void SetPlotConditions(const std::vector<CaseCondition>* conditions);
    /// A box-whisker plot of `count` variables by number. `type`: 52 median, quartiles, range without outliers; 54
    /// mean, SE, SD; 53 mean, SD, 1.96 SD; 55 mean, SE, 1.96 SE. `caption` is the second title line. Null texts and the
    /// 0 are reserved.
    short CategorizedVarBoxAndWhisker(unsigned short type, const char* title, const char* caption,
                                      const char* reserved1, const char* reserved2, int reserved3, short count,
                                      const short* variables, const char* reserved4, CaseFilter filter);
    /// A scatterplot matrix of `count` variables by number. Bit 8 of `flags`: a histogram of each variable on the
    /// diagonal; bit 128: a fitted line in each cell. The second list is empty; the rest but filter and title is
    /// reserved.
    short CorrelationScatterplot(unsigned short flags, int reserved1, short count, const short* variables,
                                 short secondCount, const short* secondVariables, unsigned short reserved2,
                                 const double* reserved3, const double* reserved4, const char* caseLine,
                                 CaseFilter filter, const std::string& title);
    /// A 3D histogram of two variables over the cases that the filter keeps; the values may come from the table or from
    /// the filter. `x` and `y` are the places of the variables, from 0; type is 4; texts but `title` and `caption` are
    /// null, the other numbers 0 and lists null.
    short Histogram3D(unsigned short type, short x, short y, short reserved1, short reserved2, const short* reserved3,
                      const short* reserved4, short reserved5, const char* title, const char* reserved6,
                      const char* caption, const char* reserved7, int reserved8, const char* reserved9,
                      CaseFilter filter);

  private:
    friend struct AnalysisBinding;  // by which a host binds its document to the analysis and runs the sequence

    CAnalysisDoc* Document;
    const CAnalysisContext& Context;
    const SequenceStep* Sequence = nullptr;
    int SequenceRows = 0;
};
