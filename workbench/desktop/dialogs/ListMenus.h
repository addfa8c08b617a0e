#pragma once

namespace quillara {

class DialogView;
class ExplorationModel;

/// Lets the user drill down on, or up from, the rows of the two lists of the startup dialog by their context menus. The
/// model outlives the view.
void AddListMenus(DialogView& startup, ExplorationModel& model);

}  // namespace quillara
