#pragma once

namespace drilltest {

/// Has the n-th question to the host's object model fail from now on, counted over all its objects; 0: none. A question
/// is a getter, the search for the application or an analysis, or the way from a graph to its document.
void FailQuestion(int question);

/// Questions since then.
int Questions();

/// What the application says of the place of results from now on.
void PlaceResults(int placement);

}  // namespace drilltest
