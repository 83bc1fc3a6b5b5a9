#pragma once
// The editing actions every view shown by a GL window carries: "applytool" (fill
// gaps), "delete_data" (Delete key) and "revert_data". They belong to the view, so
// any module's context menu can offer them; the host connects them to its edits.
class GLW;

// Their object names, by which modules and the host find them on the view.
namespace EditAction {
constexpr char fillGaps[] = "applytool";
constexpr char deleteData[] = "delete_data";
constexpr char revertData[] = "revert_data";
} // namespace EditAction

// Creates the three actions on view unless it has them already.
void addEditActions(GLW* view);
