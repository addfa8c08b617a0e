#pragma once

#include <string>

#include "host/Commons.h"
#include "platform/Handles.h"

class CAnalysisContext;
class CAnalysisDoc;
class CAnalysisSupport;
class CaseBlocks;
struct ModuleInstance;

/// One step of the sequence that the host runs through when an analysis starts. A step that gives 0 ends it.
struct SequenceStep {
    int Id;
    int (CAnalysisSupport::*Function)();
    int NextId;  ///< 0: the sequence ends here
};

/// Base of all analyses: the services of the host, by family. The host implements it; a module derives its
/// analysis from it. All calls are made from the host's one user-interface thread. Variable numbers and case
/// numbers count from 1 unless a call says otherwise. Calls without a told failure succeed; none throws, but for an
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
    /// Asked before a result document goes to its output target; true: the analysis has taken it.
    virtual bool BeforeRouteOutput(IDispatch* document);
    virtual void BeforeClose();

    // Start and memory

    /// Gives the host the steps of the analysis. The table is not copied and outlives the analysis.
    void SetSequenceTable(const SequenceStep* table, int rows);
    /// Binds the structures that the host shares with the analysis and fills the fields that the host writes.
    void InitCommons(OrvTag* table, Orv88Tag* names, b1_com* line, Wght_com* weight, _AddMenu* menu);
    /// Gives zeroed memory. Returns 0 on success, non-zero when there is none; then *address is null.
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

    // Cases

    /// Reads one case. Returns 0: a case to use; 1: a case to skip, it lies outside the selection; 2: stop the pass.
    /// For 0 and 1 fills `values`, indexed by variable number (entry 0 is spare), and the three outputs.
    int cstrtw(int caseNumber, double* values, int* weighted, double* weight, int* tag);
    /// The name of a case, counted from 0.
    std::string GetCaseName(int caseIndex);
    /// The host's columns, or null when the host offers none. Owned by the host, valid while the table is open.
    CaseBlocks* GetCaseBlocks();

    // Break and progress

    /// Non-zero when the user asked to cancel.
    int lookbr();
    void d_pbar(const char* text);
    void dstart(unsigned long total);
    void dstop();

    // Dialogs and results

    /// Lets the user fill two lists of variables. The five limits are the lowest and highest number of entries of
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

  private:
    friend class CAnalysisDoc;  // the owner of the analysis, which binds itself and runs the sequence

    CAnalysisDoc* Document;
    const CAnalysisContext& Context;
    const SequenceStep* Sequence = nullptr;
    int SequenceRows = 0;
};
