#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

// A tree of two levels with check boxes. Nodes count from 1 in the order of adding, whatever the nesting.
class Tree {
public:
    struct Node {
        std::string Text;
        int Parent = 0;         // index of the node above, 0: top level
        bool HasCheck = false;  // a heading has none
        std::int32_t Check = 0; // 0 unticked, 1 ticked
    };

    // The collection counts in 16 bits; a node that would not fit is left out.
    class NodeList {
    public:
        static constexpr std::int16_t MaxCount = 32767;
        std::int16_t Count() const { return static_cast<std::int16_t>(nodes_.size()); }

    private:
        friend class Tree;
        std::vector<Node> nodes_;
    };

    void AddGroupNode(std::string text);
    // `parent` is a node's index, 0 for the top level.
    void AddCheckNode(int parent, std::string text, std::int32_t check = 0);
    // Called once after the last node: the tree is ready for the user.
    void FinishNodes();

    const NodeList& Nodes() const { return nodes_; }
    // These three throw std::out_of_range for an index that no node has.
    const Node& NodeAt(int index) const { return nodes_.nodes_.at(static_cast<std::size_t>(index - 1)); }
    std::int32_t NodeCheck(int index) const { return NodeAt(index).Check; }
    void SetNodeCheck(int index, std::int32_t check);

    bool Finished() const { return finished_; }
    std::uint64_t Revision() const { return revision_; }           // changes when a node is added
    std::uint64_t CheckRevision() const { return checkRevision_; } // changes when a check value changes

private:
    NodeList nodes_;
    bool finished_ = false;
    std::uint64_t revision_ = 0;
    std::uint64_t checkRevision_ = 0;
};

} // namespace tarnwick
