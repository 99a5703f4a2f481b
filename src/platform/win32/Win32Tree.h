#pragma once

#include "platform/win32/Win32Control.h"

#include <vector>

struct _TREEITEM;

namespace tarnwick {

class Win32Tree final : public Win32Control {
public:
    Win32Tree(Win32Window& owner, TreeControl& model, HWND__* parent, int number);

    ~Win32Tree() override;

    std::intptr_t OnNotify(tagNMHDR& notice) override;
    void OnPosted(std::intptr_t what) override;

    bool HasOwnGround() const override { return true; }

private:
    void SyncContent() override;
    void Scale(int dpi) override;
    void ShowColors() override;
    void ShowNodes();
    void ShowChecks() const;
    void AddNode(int index);
    void ShowCheck(int index) const;
    std::intptr_t IndexOf(_TREEITEM* item) const;
    // The node's check as the real tree has it.
    unsigned RealState(int index) const; // its state image

    TreeControl& tree_;
    std::vector<_TREEITEM*> items_;     // by index - 1
    std::vector<_TREEITEM*> lastBelow_; // the last node under each, by index; under the top level at 0
    Shown<std::uint64_t> nodes_;
    Shown<std::uint64_t> checks_;
    int dpi_ = 0;
    _IMAGELIST* boxes_ = nullptr;
};

} // namespace tarnwick
