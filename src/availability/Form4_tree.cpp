// The folder tree: its nodes, and the rule that keeps a run from walking one folder twice.

#include "availability/Form4.h"
#include "favorites/Folders.h"

namespace tarnwick {

namespace {
constexpr int RootNode = 2;
}

void Form4Window::BuildTree() {
    Tree1.AddGroupNode("- Your Favorites -");
    Tree1.AddCheckNode(1, "- Favorites Root -");

    // One place stays free for the node after the folders.
    const auto hasRoom = [this] { return Tree1.Nodes().Count() < Tree::NodeList::MaxCount - 1; };
    Favorites::ListFirstLevel(hasRoom, [this](const std::string& name) { Tree1.AddCheckNode(1, name, 0); });
    Tree1.AddCheckNode(0, "Scan subfolders", 1);
    Tree1.FinishNodes();
}

// A node is known by its text, as everywhere in the run.
void Form4Window::Tree1_Check(int index, std::int32_t value) {
    const int last = Tree1.Nodes().Count();
    const std::string& text = Tree1.NodeAt(index).Text;
    if (text != Tree1.NodeAt(RootNode).Text && text != Tree1.NodeAt(last).Text) {
        if (Tree1.NodeCheck(RootNode) == 1 && value == 1)
            Tree1.SetNodeCheck(RootNode, 0);
    } else if (Tree1.NodeCheck(last) == 1 && Tree1.NodeCheck(RootNode) == 1) {
        for (int folder = RootNode + 1; folder < last; ++folder)
            Tree1.SetNodeCheck(folder, 0);
    }
}

} // namespace tarnwick
