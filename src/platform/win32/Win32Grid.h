#pragma once

#include "platform/win32/Win32Control.h"

#include <string>
#include <utility>
#include <vector>

namespace tarnwick {

// A list view that asks the model for each cell it paints, so that a million rows cost nothing.
class Win32Grid final : public Win32Control {
public:
    Win32Grid(Win32Window& owner, GridControl& model, HWND__* parent, int number);
    ~Win32Grid() override;

    std::intptr_t OnNotify(tagNMHDR& notice) override;
    void OpenMenu() override;

    // What the mouse does at this point of the grid.
    bool IsOnRow(int x, int y) const;
    void Type(wchar_t letter);
    void PressAt(int button, int x, int y);
    void FollowMouse(int x, int y);

    bool HasOwnGround() const override { return true; }

private:
    void SyncContent() override;
    void Scale(int dpi) override;
    void ShowColumns();
    void ShowSelection();
    std::string CellText(int row, int column) const;

    GridControl& grid_;
    std::vector<int> columns_; // the model's number of each column that shows
    Shown<std::size_t> columnCount_;
    Shown<std::uint64_t> content_;
    Shown<int> selectedRow_{0};
    int dpi_ = 0;
    std::pair<int, int> tipCell_ = {-1, -1}; // whose tool tip is set
    _IMAGELIST* rowSpacer_ = nullptr;
};

} // namespace tarnwick
