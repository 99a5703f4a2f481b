#pragma once

#include "platform/win32/Win32Control.h"

#include <vector>

struct _TREEITEM;

namespace tarnwick {

class Win32Tree final : public Win32Control {
public:
    Win32Tree(Win32Window& owner, TreeControl& model, HWND__* parent, int number);

    void OnNotify(tagNMHDR& notice) override;
    void OnPosted(std::intptr_t what) override;

private:
    void SyncContent() override;
    void ShowNodes();
    void AddNode(int index);
    void ShowCheck(int index);
    // The node's check as the real tree has it; the model's own for a heading.
    std::int32_t RealCheck(int index) const;

    TreeControl& tree_;
    std::vector<_TREEITEM*> items_;     // by index - 1
    std::vector<_TREEITEM*> lastBelow_; // the last node under each, by index; under the top level at 0
    std::uint64_t revision_ = 0;
    std::uint64_t checkRevision_ = 0;
};

} // namespace tarnwick
