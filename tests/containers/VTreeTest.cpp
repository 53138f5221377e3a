// The outline tree, and the two containers that are names only.

#include "foundation/containers/VTree.h"
#include "foundation/containers/VHashTable.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectCast.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/VSet.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using TreeRef = VObjectRef<VTree>;

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

std::vector<VTree*> RowsOf(VTree const& tree, std::vector<int>* depths = nullptr) {
    std::vector<VTree*> rows;
    for (long row = 0; row < tree.Count() - 1; ++row) {
        int depth = 0;
        rows.push_back(tree.ObjectForVisibleNodeWithFlatIndex(row, &depth));
        EXPECT_EQ(tree.ObjectAtIndex(row), rows.back());
        if (depths) {
            depths->push_back(depth);
        }
    }
    EXPECT_EQ(tree.ObjectAtIndex(tree.Count() - 1), nullptr);
    return rows;
}

using Rows = std::vector<VTree*>;

TEST(Tree, ALeafIsOneRowOfItsParentAndHasNone) {
    TreeRef const leaf = TreeRef::Adopt(VTree::New());
    EXPECT_EQ(leaf->Count(), 1);
    EXPECT_EQ(leaf->ObjectAtIndex(0), nullptr);
    EXPECT_EQ(leaf->ObjectAtIndex(-1), nullptr);
    EXPECT_EQ(leaf->Children(), nullptr);
    EXPECT_FALSE(leaf->AddLeaf(nullptr));
    EXPECT_FALSE(leaf->AddLeaf(leaf.Get()));
    VTree* const a = Add(leaf.Get());
    VTree* const b = Add(leaf.Get());
    EXPECT_EQ(leaf->Count(), 3);
    EXPECT_EQ(RowsOf(*leaf), (Rows{a, b}));
    EXPECT_EQ(a->Parent(), leaf.Get());
    EXPECT_FALSE(Add(a)->AddLeaf(leaf.Get())); // a node above
    EXPECT_EQ(leaf->Count(), 4);
}

TEST(Tree, ShowsRowsInOrderAndHidesWhatIsBelowOpaqueNodes) {
    TreeRef const root = TreeRef::Adopt(VTree::New());
    VTree* const a = Add(root.Get());
    VTree* const aa = Add(a);
    VTree* const aaa = Add(aa);
    VTree* const ab = Add(a);
    VTree* const b = Add(root.Get());
    VTree* const ba = Add(b);
    std::vector<int> depths;
    EXPECT_EQ(RowsOf(*root, &depths), (Rows{a, aa, aaa, ab, b, ba}));
    EXPECT_EQ(depths, (std::vector<int>{0, 1, 2, 1, 0, 1}));
    a->SetNodeOpaque(true);
    EXPECT_TRUE(a->IsOpaque());
    EXPECT_EQ(RowsOf(*root), (Rows{a, b, ba}));
    EXPECT_EQ(a->Count(), 1);
    EXPECT_EQ(a->ObjectAtIndex(0), nullptr);
    a->SetNodeOpaque(false);
    aa->SetNodeOpaque(true);
    EXPECT_EQ(RowsOf(*root), (Rows{a, aa, ab, b, ba}));
    int depth = 5;
    EXPECT_EQ(root->ObjectForVisibleNodeWithFlatIndex(2, &depth), ab);
    EXPECT_EQ(depth, 6);
    aa->ClearTree();
    EXPECT_FALSE(aa->IsOpaque());
    EXPECT_EQ(aa->Parent(), a);
    EXPECT_EQ(RowsOf(*root), (Rows{a, aa, ab, b, ba}));
}

TEST(Tree, CountsChildrenOfDerivedClassesThatHaveNoRows) {
    TreeRef const root = TreeRef::Adopt(VTree::New());
    VTree* const a = Add(root.Get());
    Add(Add<AnotherTree>(a));
    VTree* const aa = Add(a);
    VTree* const b = Add(root.Get());
    EXPECT_EQ(a->OpaqueSpan(), 4);
    EXPECT_EQ(RowsOf(*root), (Rows{a, aa, nullptr, nullptr, b}));
    Add<AnotherTree>(root.Get());
    EXPECT_EQ(RowsOf(*root), (Rows{a, aa, nullptr, nullptr, b, nullptr}));
    EXPECT_EQ(VObjectCastExact<VTree>(a), a);
    EXPECT_EQ(VObjectCastExact<VTree>(root->Children()->ObjectAtIndex(2)), nullptr);
    EXPECT_NE(VObjectCast<VTree>(root->Children()->ObjectAtIndex(2)), nullptr);
    EXPECT_EQ(VObjectCast<VTree>(root->Children()), nullptr);
    EXPECT_EQ(VObjectCastExact<VTree>(nullptr), nullptr);
}

/// The same by recursion, child by child.
VTree* RowBelow(VTree const& node, long index, int& depth) {
    long row = 0;
    for (long i = 0; node.Children() && i < node.Children()->Count(); ++i) {
        auto* const child = VObjectCastExact<VTree>(node.Children()->ObjectAtIndex(i));
        if (!child) {
            continue;
        }
        if (row == index) {
            return child;
        }
        if (index < row + child->OpaqueSpan()) {
            ++depth;
            return RowBelow(*child, index - row - 1, depth);
        }
        row += child->OpaqueSpan();
    }
    return nullptr;
}

TEST(Tree, FindsTheRowsThatRecursionFinds) {
    std::minstd_rand random(1);
    for (int round = 0; round < 200; ++round) {
        TreeRef const root = TreeRef::Adopt(VTree::New());
        Rows nodes = {root.Get()};
        for (int i = 0; i < 14; ++i) {
            VTree* const parent = nodes[random() % nodes.size()];
            nodes.push_back(random() % 5 == 0 ? Add<AnotherTree>(parent) : Add(parent));
            nodes.back()->SetNodeOpaque(random() % 4 == 0);
        }
        for (long index = 0; index <= root->Count(); ++index) {
            int expectedDepth = 0;
            int depth = 0;
            VTree* const expected = RowBelow(*root, index, expectedDepth);
            EXPECT_EQ(root->ObjectForVisibleNodeWithFlatIndex(index, &depth), expected);
            EXPECT_EQ(depth, expectedDepth);
        }
    }
}

TEST(Tree, RetainsItsDataAndIsAContainerOfData) {
    auto const data = VObjectRef<ACounted>::Adopt(ACounted::New());
    TreeRef const root = TreeRef::Adopt(VTree::New());
    IObjectContainer& container = *root;
    EXPECT_TRUE(container.AddObject(data.Get()));
    auto* const node = VObjectCastExact<VTree>(container.ObjectAtIndex(0));
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->NodeData(), data.Get());
    EXPECT_EQ(node->RetainCount(), 1);
    node->SetNodeData(data.Get());
    EXPECT_EQ(data->RetainCount(), 2);
    node->SetNodeData(nullptr);
    EXPECT_EQ(data->RetainCount(), 1);
    EXPECT_TRUE(root->AddDataLeaf(data.Get()));
    root->SetNodeData(data.Get());
    EXPECT_EQ(data->RetainCount(), 3);
    root->ClearTree();
    EXPECT_EQ(data->RetainCount(), 1);
    EXPECT_EQ(root->Children(), nullptr);
}

TEST(Tree, NodesThatOutliveTheirParentForgetIt) {
    TreeRef root = TreeRef::Adopt(VTree::New());
    TreeRef const other = TreeRef::Adopt(VTree::New());
    TreeRef const kept(Add(Add(root.Get())));
    TreeRef const twice(Add(root.Get()));
    EXPECT_TRUE(root->AddLeaf(twice.Get()));
    TreeRef const moved(Add(root.Get()));
    EXPECT_TRUE(other->AddLeaf(moved.Get()));
    Add(kept.Get());
    root = TreeRef();
    EXPECT_EQ(kept->Parent(), nullptr);
    EXPECT_EQ(kept->Count(), 2); // its own children stay
    EXPECT_EQ(kept->RetainCount(), 1);
    EXPECT_EQ(twice->RetainCount(), 1);
    EXPECT_EQ(moved->Parent(), other.Get());
}

TEST(Tree, MayBeWideAndDeep) {
    constexpr long kNodes = 200000;
    long const existing = VTree::TheClass()->Existing();
    {
        TreeRef const root = TreeRef::Adopt(VTree::New());
        VTree* node = root.Get();
        for (long i = 0; i < kNodes; ++i) {
            node = Add(node);
        }
        EXPECT_EQ(root->Count(), kNodes + 1);
        int depth = 0;
        EXPECT_EQ(root->ObjectForVisibleNodeWithFlatIndex(kNodes - 1, &depth), node);
        EXPECT_EQ(depth, kNodes - 1);
        for (long i = 0; i < 10000; ++i) {
            root->AddDataLeaf(nullptr);
        }
        EXPECT_EQ(root->Count(), kNodes + 10001);
        EXPECT_EQ(root->ObjectAtIndex(kNodes + 9999), root->Children()->ObjectAtIndex(10000));
    }
    EXPECT_EQ(VTree::TheClass()->Existing(), existing);
}

TEST(SetAndHashTable, AreRegisteredNames) {
    EXPECT_STREQ(VHashTable::TheClass()->Name(), "VHashTable");
    EXPECT_STREQ(VSet::VSetMember::TheClass()->Name(), "VSetMember");
    for (VClass const* const cls : {VHashTable::TheClass(), VSet::TheClass(), VSet::VSetMember::TheClass()}) {
        auto const object = VObjectRef<VObject>::Adopt(cls->NewInstance());
        EXPECT_TRUE(object->IsMemberOfClass(cls));
    }
    VObjectRingBufferTmpl<VSet::VSetMember> ring(2);
    auto const member = VObjectRef<VSet::VSetMember>::Adopt(VSet::VSetMember::New());
    EXPECT_TRUE(ring.Push(member.Get()));
    EXPECT_STREQ(ring.ClassName(), "TRingBuffer_VSetMember");
}

} // namespace
