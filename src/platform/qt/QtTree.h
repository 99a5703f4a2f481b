#pragma once

#include "platform/qt/QtControl.h"

#include <QTreeWidget>

#include <cstdint>
#include <vector>

namespace tarnwick {

class QtTree : public QtControl {
public:
    QtTree(TreeControl& tree, QWidget& parent, QtWindow& window);

protected:
    void SyncKind() override;
    ColorRole DefaultBackColor() const override { return ColorRole::WindowBackground; }

private:
    void BuildNodes();
    void ShowChecks();
    void TakeCheck(QTreeWidgetItem& item);

    TreeControl& tree_;
    QtWindow& window_;
    QTreeWidget& view_;
    std::vector<QTreeWidgetItem*> items_; // by node index, from 1
    Shown<std::uint64_t> nodes_;
    Shown<std::uint64_t> checks_;
};

} // namespace tarnwick
