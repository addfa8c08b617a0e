#pragma once

#include <string>

#include "platform/Automation.h"

class CAnalysisSupport;

/// Turns a value that a script writes into a text of UTF-8: a text as it is, a number in decimal notation, a list as
/// its items with blanks between, a list of lists with bars between. A text in a list stands in double quotes unless it
/// is a plain word. False, and an empty text, when it can't be.
bool VariantToTextList(const VARIANT& value, std::string& text);

/// The form of the control library: as CAnalysisSupport::StripFormatting. Analyses give the mode 1.
void StripFormatting(std::string& text, int mode);

/// Makes an analysis the current one of the host until the end of a scope. The analysis must be open.
class CEnterAnalysisContext {
  public:
    explicit CEnterAnalysisContext(CAnalysisSupport& analysis);
    CEnterAnalysisContext(const CEnterAnalysisContext&) = delete;
    CEnterAnalysisContext& operator=(const CEnterAnalysisContext&) = delete;
    ~CEnterAnalysisContext();

  private:
    CAnalysisSupport* Former;
};
