#pragma once

#include "foundation/containers/IObjectContainer.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstddef>
#include <iterator>
#include <memory>

namespace VFoundation {

class VObjectArray;

namespace detail {
class TreePath;
} // namespace detail

/// One node of an outline: a data object and child nodes in order. A node can be made opaque (collapsed), which
/// hides its descendants from the rows that a list would show:
///
///     auto const root = MakeObject<VTree>();
///     root->AddDataLeaf(chapter);                                 // row 0
///     for (VTree::Row const& row : root->Rows()) {
///         Draw(row.index, row.depth, row.node->NodeData());
///     }
///
/// The node that is asked is not a row itself; row 0 is its first child. As a container, a tree is the rows below
/// it. Finding a row costs the rows before it, counting them costs all of them, and `Rows()` costs the same for each
/// row. No operation recurses, so a tree may be as deep as memory allows.
///
/// A node belongs in one place of one tree. A node that stands in two has the parent that it was added to last, and
/// rows in both; counting and finding rows still look at each place once. Where a node comes below itself, it has no
/// row; in such a tree the rows of a node depend on the way to it, and each of them costs a step. More rows than a
/// `long` holds count as the largest `long`.
///
/// DELIBERATE: `Count()` counts the node itself, so it is one more than the rows that `ObjectAtIndex` can reach.
/// DELIBERATE: `ObjectAtIndex` gives nodes, while `AddObject` takes data.
/// DELIBERATE: children of a class derived from `VTree` have no rows, but count in the `OpaqueSpan()` of the nodes
/// above them; rows after such a child, up to the end of its parent's span, are null.
///
/// Destructors of data and children may use the node: they find it without what it is letting go of.
///
/// Ownership: retains its data and its children; a child knows its parent without retaining it, and forgets one
/// that dies or clears its children. Children are released in order, the deepest of a very deep tree without
/// recursion.
/// Threads: one thread at a time for a whole tree.
class VFOUNDATION_API VTree : public Registered<VTree, VObject>, public IObjectContainer {
  public:
    static constexpr char const* kClassName = "VTree";
    static VClass* ms_theClass;

    explicit VTree(VClass* cls = nullptr);
    VTree(VTree const&) = delete;
    VTree& operator=(VTree const&) = delete;
    ~VTree() override;
    [[nodiscard]] static VTree* New();

    /// Appends a child node. False for null, the node itself and a node above it, going by `Parent()`.
    bool AddLeaf(VTree* child);
    /// Appends a new child node with this data, which may be null.
    bool AddDataLeaf(VObject const* data);
    void SetNodeData(VObject const* data);
    void SetNodeOpaque(bool opaque) noexcept { m_bOpaque = opaque; }
    /// Lets go of data and children, and makes the node transparent. It stays where it is.
    void ClearTree();

    /// The node that this one was added to (borrowed); null for a root.
    VTree* Parent() const noexcept;
    /// Borrowed, or null.
    VObject* NodeData() const noexcept { return m_pData.Get(); }
    /// The child nodes (borrowed); null until the first one. Add through `AddLeaf` only; a child that is removed from
    /// the array names this parent until the parent is destroyed.
    VObjectArray* Children() const noexcept { return m_pChildren.Get(); }
    bool IsOpaque() const noexcept { return m_bOpaque; }

    /// The rows that the node takes with its visible descendants: 1 when it is opaque.
    long OpaqueSpan() const;
    /// The node at a row (borrowed); null beyond the last row, for a negative index and below an opaque node.
    /// `depth`, unless null, is raised by the levels between the children of this node and the row.
    VTree* ObjectForVisibleNodeWithFlatIndex(long index, int* depth) const;

    /// One row, as `Rows()` gives it.
    struct Row {
        VTree* node; // borrowed
        long index;  // `ObjectAtIndex(index)` is the node
        int depth;   // 0 for the children of the node that was asked
    };
    class RowIterator;
    class RowRange;
    /// The rows below this node in order, for a range-for; those that are null are left out. The loop may change the
    /// tree; what it moves may then be met twice, or not at all.
    RowRange Rows() const;

    /// `OpaqueSpan()`.
    long Count() const override { return OpaqueSpan(); }
    /// The node at a row, without its depth.
    VObject* ObjectAtIndex(long index) const override;
    /// `AddDataLeaf`.
    bool AddObject(VObject const* object) override { return AddDataLeaf(object); }

  private:
    bool HasChildren() const noexcept;
    bool IsBelow(VTree const* node) const noexcept;
    VObjectRef<VObjectArray> TakeChildren() noexcept;

    std::shared_ptr<VTree*> m_pParent; // shared with the parent, which clears it
    std::shared_ptr<VTree*> m_self;    // from the first child on
    bool m_bOpaque = false;
    VObjectRef<VObjectArray> m_pChildren;
    VObjectRef<VObject> m_pData;
};

/// Goes from row to row, once.
///
/// Ownership: retains the current node and those above it.
class VTree::RowIterator {
  public:
    using value_type = Row;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::input_iterator_tag;

    explicit RowIterator(VTree const& top);
    RowIterator(RowIterator&& other) noexcept;
    RowIterator& operator=(RowIterator&& other) noexcept;
    ~RowIterator();

    Row const& operator*() const noexcept { return m_row; }
    Row const* operator->() const noexcept { return &m_row; }
    RowIterator& operator++();
    void operator++(int) { ++*this; }
    /// True past the last row.
    friend bool operator==(RowIterator const& it, std::default_sentinel_t) noexcept { return !it.m_held; }

  private:
    std::unique_ptr<detail::TreePath> m_path;
    VObjectRef<VTree> m_held;
    Row m_row{nullptr, -1, 0};
    long m_hidden = 0; // rows since the last one that are null
};

/// What `VTree::Rows` returns. Borrows the node.
class VTree::RowRange {
  public:
    explicit RowRange(VTree const& top) noexcept : m_top(&top) {}

    RowIterator begin() const { return RowIterator(*m_top); }
    std::default_sentinel_t end() const noexcept { return {}; }

  private:
    VTree const* m_top;
};

inline VTree::RowRange VTree::Rows() const {
    return RowRange(*this);
}

} // namespace VFoundation
