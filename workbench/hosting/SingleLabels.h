#pragma once

#include <map>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// The value labels of one variable for who knows its values in single precision only. Distinct values may become one
/// there (20230103 and 20230104); which of them is meant isn't known, so none of them has a label here. Values that
/// are nearly equal count as one, as in all of the analysis.
class SingleLabels {
  public:
    /// Walks the labels and the values once. The variable must outlive the labels.
    explicit SingleLabels(const Variable& variable);

    /// The label of the one value, among those that are labelled or that a case has, whose single-precision form this
    /// is; null when there are several, or it has none.
    [[nodiscard]] const std::string* Find(float value) const;

  private:
    struct LabelledValue {
        float Single;
        double Value;
        const std::string* Label;  ///< null: several values have this form
    };

    void Add(double value, const std::string* label);
    [[nodiscard]] std::vector<LabelledValue>::const_iterator PlaceOf(float value) const;

    std::vector<LabelledValue> Known;  // rising
};

/// The labels of the variables of a table, each made when it is first asked for.
class SingleLabelsOfTable {
  public:
    [[nodiscard]] const SingleLabels& Of(const Variable& variable) {
        return Made.try_emplace(&variable, variable).first->second;
    }
    /// To be called when the table goes.
    void Forget() { Made.clear(); }

  private:
    std::map<const Variable*, SingleLabels> Made;
};

}  // namespace quillara
