#include "platform/qt/QtTree.h"

#include "platform/qt/QtText.h"
#include "platform/qt/QtWindow.h"

#include <QHeaderView>

namespace tarnwick {

namespace {

constexpr int Indentation = 17; // pixels
constexpr int NodeNumber = Qt::UserRole;

Qt::CheckState StateOf(std::int32_t check) { return check != 0 ? Qt::Checked : Qt::Unchecked; }

} // namespace

QtTree::QtTree(TreeControl& tree, QWidget& parent, QtWindow& window)
    : QtControl(tree, *new QTreeWidget(&parent)), tree_(tree), window_(window),
      view_(static_cast<QTreeWidget&>(Real())) {
    AddPart(*view_.viewport());
    view_.setColumnCount(1);
    view_.setHeaderHidden(true);
    // As wide as its longest name, so that it scrolls instead of cutting names.
    view_.header()->setStretchLastSection(false);
    view_.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    view_.setUniformRowHeights(true);
    view_.setSelectionBehavior(QAbstractItemView::SelectItems); // a selected node's check box stays readable
    view_.setIndentation(Indentation);
    view_.setContextMenuPolicy(Qt::PreventContextMenu);
    QObject::connect(&view_, &QTreeWidget::itemChanged, &window, [this](QTreeWidgetItem* item) { TakeCheck(*item); });
}

void QtTree::SyncKind() {
    const bool checks = checks_.Differs(tree_.CheckRevision());
    if (nodes_.Differs(tree_.Revision()))
        BuildNodes();
    else if (checks)
        ShowChecks();
}

void QtTree::BuildNodes() {
    view_.clear();
    items_.assign(1, nullptr);
    for (int index = 1; index <= tree_.Nodes().Count(); ++index) {
        const Tree::Node& node = tree_.NodeAt(index);
        auto* item = new QTreeWidgetItem;
        item->setText(0, SingleLineOf(node.Text));
        item->setData(0, NodeNumber, index);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        if (node.HasCheck) {
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(0, StateOf(node.Check));
        }
        if (node.Parent > 0)
            items_[static_cast<std::size_t>(node.Parent)]->addChild(item);
        else
            view_.addTopLevelItem(item);
        items_.push_back(item);
    }
    view_.expandAll();
    view_.setCurrentItem(view_.topLevelItem(0));
}

void QtTree::ShowChecks() {
    for (int index = 1; index <= tree_.Nodes().Count(); ++index) {
        const Tree::Node& node = tree_.NodeAt(index);
        QTreeWidgetItem& item = *items_[static_cast<std::size_t>(index)];
        if (node.HasCheck && item.checkState(0) != StateOf(node.Check))
            item.setCheckState(0, StateOf(node.Check));
    }
}

// The box shows what the model makes of it.
void QtTree::TakeCheck(QTreeWidgetItem& item) {
    const int index = item.data(0, NodeNumber).toInt();
    const Qt::CheckState before = StateOf(tree_.NodeCheck(index));
    if (item.checkState(0) == before) // our own writing
        return;
    item.setCheckState(0, before);
    window_.Pass([&tree = tree_, index](Input& input) { input.Tick(tree, index); });
}

} // namespace tarnwick
