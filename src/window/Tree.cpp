#include "window/Tree.h"

#include <utility>

namespace tarnwick {

void Tree::AddGroupNode(std::string text) {
    if (nodes_.Count() == NodeList::MaxCount)
        return;
    nodes_.nodes_.push_back({std::move(text), 0, false, 0});
    ++revision_;
}

void Tree::AddCheckNode(int parent, std::string text, std::int32_t check) {
    if (nodes_.Count() == NodeList::MaxCount)
        return;
    nodes_.nodes_.push_back({std::move(text), parent, true, check});
    ++revision_;
}

void Tree::FinishNodes() {
    finished_ = true;
    ++revision_;
}

void Tree::SetNodeCheck(int index, std::int32_t check) {
    Node& node = nodes_.nodes_.at(static_cast<std::size_t>(index - 1));
    if (node.Check == check)
        return;
    node.Check = check;
    ++checkRevision_;
}

} // namespace tarnwick
