#include "foundation/containers/VTree.h"
#include "foundation/containers/VHashTable.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VSet.h"
#include "foundation/containers/internal/VObjectCast.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using testing_support::ALast;
using TreeRef = VObjectRef<VTree>;
using Rows = std::vector<VObject*>;

/// A tree node that is not exactly a `VTree`.
class AnotherTree : public Registered<AnotherTree, VTree> {
  public:
    static constexpr char const* kClassName = "AnotherTree";
    static inline VClass* ms_theClass = nullptr;
    explicit AnotherTree(VClass* cls = nullptr) : Registered(cls) {}
    static AnotherTree* New() { return new AnotherTree; }
};

/// A new child (borrowed).
template <class Node = VTree>
VTree* Add(VTree* parent) {
    auto const child = VObjectRef<Node>::Adopt(Node::New());
    EXPECT_TRUE(parent->AddLeaf(child.Get()));
    return child.Get();
}

/// The rows that the count promises, and the one after them, which is none.
Rows RowsOf(IObjectContainer const& tree) {
    Rows rows;
    for (long row = 0; row < tree.Count() - 1; ++row) {
        rows.push_back(tree.ObjectAtIndex(row));
    }
    EXPECT_EQ(tree.ObjectAtIndex(tree.Count() - 1), nullptr);
    EXPECT_EQ(tree.ObjectAtIndex(-1), nullptr);
    return rows;
}

TEST(VTree, ShowsRowsInOrderAndHidesWhatIsBelowOpaqueNodes) {
    TreeRef const root = TreeRef::Adopt(VTree::New());
    EXPECT_EQ(RowsOf(*root), Rows{});
    EXPECT_FALSE(root->AddLeaf(nullptr));
    EXPECT_FALSE(root->AddLeaf(root.Get()));
    VTree* const a = Add(root.Get());
    VTree* const aa = Add(a);
    VTree* const ab = Add(a);
    VTree* const b = Add(root.Get());
    EXPECT_FALSE(aa->AddLeaf(root.Get())); // a node above
    EXPECT_EQ(RowsOf(*root), (Rows{a, aa, ab, b}));
    a->SetNodeOpaque(true);
    EXPECT_EQ(RowsOf(*root), (Rows{a, b}));
    a->SetNodeOpaque(false);
    // A child of a derived class has no row, but counts: the rows at its parent's end are none.
    Add(Add<AnotherTree>(aa));
    EXPECT_EQ(aa->OpaqueSpan(), 3);
    EXPECT_EQ(RowsOf(*root), (Rows{a, aa, nullptr, nullptr, ab, b}));
    a->SetNodeOpaque(true);
    a->ClearTree();
    EXPECT_FALSE(a->IsOpaque());
    EXPECT_EQ(a->Parent(), root.Get());
    EXPECT_EQ(RowsOf(*root), (Rows{a, b}));
}

/// The row found by recursion, child by child.
VTree* RowBelow(VTree const& node, long index, int& depth) {
    long row = 0;
    for (long i = 0; node.Children() && i < node.Children()->Count(); ++i) {
        auto* const child = VObjectCastExact<VTree>(node.Children()->ObjectAtIndex(i));
        if (child && row == index) {
            return child;
        }
        if (child && index < row + child->OpaqueSpan()) {
            return RowBelow(*child, index - row - 1, ++depth);
        }
        row += child ? child->OpaqueSpan() : 0;
    }
    return nullptr;
}

TEST(VTree, FindsTheRowsThatRecursionFinds) {
    std::minstd_rand random(1);
    for (int round = 0; round < 200; ++round) {
        TreeRef const root = TreeRef::Adopt(VTree::New());
        std::vector<VTree*> nodes = {root.Get()};
        for (int i = 0; i < 14; ++i) {
            VTree* const parent = nodes[random() % nodes.size()];
            nodes.push_back(random() % 5 == 0 ? Add<AnotherTree>(parent) : Add(parent));
            nodes.back()->SetNodeOpaque(random() % 4 == 0);
        }
        for (int i = random() % 2 ? 6 : 0; i > 0; --i) { // nodes with several places
            std::size_t const above = random() % nodes.size();
            nodes[above]->Children() ? nodes[above]->AddLeaf(nodes[above + random() % (nodes.size() - above)])
                                     : false;
        }
        std::vector<VTree::Row> rows;
        for (long index = 0; index <= root->Count(); ++index) {
            int expectedDepth = 0;
            int depth = 0;
            VTree* const expected = RowBelow(*root, index, expectedDepth);
            EXPECT_EQ(root->ObjectForVisibleNodeWithFlatIndex(index, &depth), expected);
            EXPECT_EQ(depth, expectedDepth);
            if (expected) {
                rows.push_back({expected, index, depth});
            }
        }
        auto row = rows.begin();
        for (VTree::Row const& found : root->Rows()) {
            ASSERT_NE(row, rows.end());
            EXPECT_EQ(found.node, row->node);
            EXPECT_EQ(found.index, row->index);
            EXPECT_EQ(found.depth, row->depth);
            ++row;
        }
        EXPECT_EQ(row, rows.end());
    }
}

TEST(VTree, RetainsDataAndChildrenWhichOutliveItWithoutIt) {
    auto const data = VObjectRef<ACounted>::Adopt(ACounted::New());
    TreeRef root = TreeRef::Adopt(VTree::New());
    EXPECT_TRUE(root->AddObject(data.Get()));
    auto* const node = VObjectCastExact<VTree>(root->ObjectAtIndex(0));
    EXPECT_EQ(node->RetainCount(), 1);
    node->SetNodeData(data.Get());
    root->SetNodeData(data.Get());
    EXPECT_EQ(data->RetainCount(), 3);
    root->ClearTree();
    EXPECT_EQ(data->RetainCount(), 1);
    TreeRef const other = TreeRef::Adopt(VTree::New());
    TreeRef const removed(Add(root.Get()));
    root->Children()->RemoveAllObjects(); // past the tree
    TreeRef const kept(Add(Add(root.Get())));
    TreeRef const twice(Add(root.Get()));
    TreeRef const moved(Add(root.Get()));
    EXPECT_TRUE(root->AddLeaf(twice.Get()));
    EXPECT_TRUE(other->AddLeaf(moved.Get()));
    Add(kept.Get());
    root = TreeRef();
    EXPECT_EQ(kept->Parent(), nullptr);
    EXPECT_EQ(removed->Parent(), nullptr);
    EXPECT_EQ(kept->Count(), 2); // its own children stay
    EXPECT_EQ(kept->RetainCount() + twice->RetainCount(), 2);
    EXPECT_EQ(moved->Parent(), other.Get());
}

TEST(VTree, HasNoRowForANodeBelowItself) {
    TreeRef const a = TreeRef::Adopt(VTree::New());
    TreeRef const b = TreeRef::Adopt(VTree::New());
    TreeRef const c = TreeRef::Adopt(VTree::New());
    EXPECT_TRUE(a->AddLeaf(b.Get()));
    EXPECT_TRUE(c->AddLeaf(b.Get()));
    VTree* const leaf = Add(b.Get());
    EXPECT_TRUE(b->AddLeaf(a.Get())); // below a, but c is its parent
    EXPECT_EQ(RowsOf(*a), (Rows{b.Get(), leaf}));
    EXPECT_EQ(RowsOf(*b), (Rows{leaf, a.Get()}));
    EXPECT_EQ(RowsOf(*c), (Rows{b.Get(), leaf, a.Get()}));
    c->Children()->AddObject(c.Get());
    EXPECT_EQ(c->Count(), 4);
    // Parents in a circle, which those that look for a node above must leave.
    a->Children()->RemoveObject(b.Get());
    b->Children()->RemoveAllObjects();
    EXPECT_TRUE(a->AddLeaf(b.Get()));
    EXPECT_EQ(a->Parent(), b.Get());
    EXPECT_TRUE(b->AddLeaf(Add(c.Get())));
    TreeRef const parent = TreeRef::Adopt(VTree::New());
    Add(parent.Get());
    EXPECT_TRUE(a->AddLeaf(parent.Get()));
    for (VTree* const node : {a.Get(), b.Get(), c.Get()}) {
        node->ClearTree();
    }
}

TEST(VTree, MayBeUsedByDestructorsOfItsDataAndChildren) {
    TreeRef root = TreeRef::Adopt(VTree::New());
    TreeRef const other = TreeRef::Adopt(VTree::New());
    TreeRef const survivor(Add(root.Get()));
    VTree* const tree = root.Get();
    auto const dying = [tree](auto act) {
        tree->AddDataLeaf(VObjectRef<VObject>::Adopt(new ALast<ACounted>(act)).Get());
    };
    dying([&] { EXPECT_TRUE(other->AddLeaf(survivor.Get())); }); // which is leaving, too
    dying([&] { Add(tree); });
    dying([&] { tree->ClearTree(); });
    tree->SetNodeData(VObjectRef<VObject>::Adopt(new ALast<ACounted>([&] {
                          EXPECT_EQ(tree->Children(), nullptr);
                          EXPECT_EQ(survivor->Parent(), nullptr);
                      })).Get());
    root->ClearTree();
    EXPECT_EQ(survivor->Parent(), other.Get());
    EXPECT_EQ(root->Count(), 1);
    TreeRef const kept = TreeRef::Adopt(VTree::New());
    dying([&] { tree->AddLeaf(kept.Get()); });
    root = TreeRef(); // its destructor gets another child
    EXPECT_EQ(kept->Parent(), nullptr);
    EXPECT_EQ(kept->RetainCount(), 1);
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST(VTree, MayBeWideAndDeep) {
    constexpr long kNodes = 100000;
    long const existing = VTree::TheClass()->Existing();
    {
        TreeRef const root = TreeRef::Adopt(VTree::New());
        VTree* node = root.Get();
        for (long i = 0; i < kNodes; ++i) {
            root->AddDataLeaf(nullptr);
            node = Add(node);
        }
        EXPECT_EQ(root->Count(), 2 * kNodes + 1);
        EXPECT_EQ(root->ObjectAtIndex(kNodes), node); // after the first leaf
        EXPECT_EQ(root->ObjectAtIndex(2 * kNodes - 1), root->Children()->ObjectAtIndex(kNodes));
    }
    EXPECT_EQ(VTree::TheClass()->Existing(), existing);
}

TEST(VTree, CountsNodesThatAreSharedOnEveryLevel) {
    TreeRef const root = TreeRef::Adopt(VTree::New());
    VTree* node = root.Get();
    for (int level = 0; level < 50; ++level) { // 2^51 rows
        VTree* const child = Add(node);
        EXPECT_TRUE(node->AddLeaf(child));
        node = child;
    }
    long const rows = (1L << 51) - 1;
    EXPECT_EQ(root->Count(), rows);
    EXPECT_EQ(root->ObjectAtIndex(rows - 2), node);
    EXPECT_EQ(root->ObjectAtIndex(rows - 1), nullptr);
    EXPECT_EQ(root->ObjectAtIndex(rows / 2), root->Children()->ObjectAtIndex(0));
    auto row = root->Rows().begin();
    for (int i = 0; i < 51; ++i) {
        ++row;
    }
    EXPECT_EQ(row->index, 51);
    for (int level = 0; level < 20; ++level) {
        VTree* const child = Add(node);
        EXPECT_TRUE(node->AddLeaf(child));
        node = child;
    }
    EXPECT_EQ(root->Count(), LONG_MAX);
}

TEST(VTree, KeepsARowThatTheLoopLetsGo) {
    TreeRef const root = TreeRef::Adopt(VTree::New());
    Add(Add(Add(root.Get())));
    Add(root.Get());
    int rows = 0;
    for (VTree::Row const& row : root->Rows()) {
        root->ClearTree();
        EXPECT_GE(row.node->RetainCount(), 1);
        ++rows;
    }
    EXPECT_EQ(rows, 3); // what was below the first one is still below it
}

TEST(VSet, AreRegisteredNames) {
    for (VClass const* const cls : {VHashTable::TheClass(), VSet::TheClass(), VSet::VSetMember::TheClass()}) {
        EXPECT_TRUE(VObjectRef<VObject>::Adopt(cls->NewInstance())->IsMemberOfClass(cls));
    }
}

} // namespace
