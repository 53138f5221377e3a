#include "foundation/containers/VTree.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/containers/internal/VObjectCast.h"

#include <limits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace VFoundation {

VClass* VTree::ms_theClass = nullptr;

VTree::VTree(VClass* cls) : Registered(cls) {
}

VTree::~VTree() {
    while (m_pData || m_pChildren) { // destructors may add to it
        ClearTree();
    }
    if (m_self) {
        *m_self = nullptr;
    }
}

VTree* VTree::New() {
    return new VTree;
}

// Building

bool VTree::AddLeaf(VTree* child) {
    if (!child || child == this || (child->HasChildren() && IsBelow(child))) {
        return false;
    }
    if (!m_self) {
        m_self = std::make_shared<VTree*>(this);
    }
    if (!m_pChildren) {
        m_pChildren = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    }
    if (!m_pChildren->AddObject(child)) {
        return false;
    }
    child->m_pParent = m_self;
    return true;
}

bool VTree::AddDataLeaf(VObject const* data) {
    auto const leaf = VObjectRef<VTree>::Adopt(New());
    leaf->SetNodeData(data);
    return AddLeaf(leaf.Get());
}

void VTree::SetNodeData(VObject const* data) {
    m_pData.Exchange(const_cast<VObject*>(data)); // retained, never changed
}

void VTree::ClearTree() {
    auto const children = TakeChildren();
    auto const data = std::move(m_pData);
    m_bOpaque = false;
    // Both are released here, the data first, with nothing left to do.
}

VTree* VTree::Parent() const noexcept {
    return m_pParent ? *m_pParent : nullptr;
}

bool VTree::HasChildren() const noexcept {
    return m_pChildren && m_pChildren->Count() > 0;
}

/// Goes up through the parents. `slow` goes half as fast: in a circle, both meet.
bool VTree::IsBelow(VTree const* node) const noexcept {
    VTree const* slow = this;
    bool slowMoves = false;
    for (VTree const* above = this; above;) {
        if (above == node) {
            return true;
        }
        above = above->Parent();
        slow = slowMoves ? slow->Parent() : slow;
        slowMoves = !slowMoves;
        if (above == slow) {
            return false;
        }
    }
    return false;
}

VObjectRef<VObjectArray> VTree::TakeChildren() noexcept {
    VObjectRef<VObjectArray> children = std::move(m_pChildren);
    for (long i = 0; children && i < children->Count(); ++i) {
        auto* const child = VObjectCast<VTree>(children->ObjectAtIndex(i));
        if (child && child->Parent() == this) {
            child->m_pParent.reset();
        }
    }
    return children;
}

// Rows

namespace detail {

/// The way from the node that was asked down to the node whose children are being walked. It notes the rows of every
/// node that several hold, so that a walk which comes to such a node again can pass it in one step: a node that is
/// shared on every level would take exponential time otherwise.
///
/// A node below itself has no row there, so in a tree with a circle the rows of a node depend on the way to it. From
/// the first such place on, a walk notes nothing.
class TreePath {
  public:
    /// More rows than this count as so many.
    static constexpr long kMostRows = std::numeric_limits<long>::max();

    struct Level {
        VTree const* node;
        VObjectRef<VObject const> held; // over a loop that changes the tree
        long next;                      // the child to look at
        long hidden;                    // what children without rows add to the span
        long rowsBefore;
    };

    static long Sum(long a, long b) noexcept { return a > kMostRows - b ? kMostRows : a + b; }

    /// Goes on with the children of `node` if it shows any.
    void Enter(VTree const& node, long rowsBefore) {
        if (node.IsOpaque() || !HasChildren(node)) {
            return;
        }
        if (node.RetainCount() > 1) { // only a node with several holders can be met twice
            m_shared[&node] = kOnPath;
        }
        m_levels.push_back({&node, KeepAlive(node), 0, 0, rowsBefore});
    }
    void Leave(long rows) {
        Level const& top = m_levels.back();
        if (auto const entry = m_shared.find(top.node); entry != m_shared.end()) {
            entry->second = rows == kMostRows ? kMostRows : rows - top.rowsBefore;
        }
        auto const held = std::move(m_levels.back().held); // released when the path is whole
        m_levels.pop_back();
    }

    bool IsEmpty() const noexcept { return m_levels.empty(); }
    std::size_t Depth() const noexcept { return m_levels.size(); }
    Level& Top() { return m_levels.back(); }
    bool IsAtEnd() const {
        Level const& top = m_levels.back();
        return !HasChildren(*top.node) || top.next >= top.node->Children()->Count();
    }

    /// The next child and whether it counts; one that is on the path itself is null.
    VObject* NextChild() {
        Level& top = Top();
        VObject* const object = top.node->Children()->ObjectAtIndex(top.next++);
        auto const* const child = VObjectCast<VTree>(object);
        if (!child || !Contains(*child)) {
            return object;
        }
        m_isCircular = true;
        return nullptr;
    }

    /// The rows below a node that the walk has left before; -1 when it is to be walked.
    long KnownRowsBelow(VTree const& node) const {
        if (m_isCircular || m_shared.empty() || node.IsOpaque() || node.RetainCount() < 2) {
            return kUnknown;
        }
        auto const entry = m_shared.find(&node);
        return entry == m_shared.end() ? kUnknown : entry->second;
    }

  private:
    static constexpr long kUnknown = -1;
    static constexpr long kOnPath = -2;

    static bool HasChildren(VTree const& node) noexcept {
        return node.Children() && node.Children()->Count() > 0;
    }
    bool Contains(VTree const& node) const noexcept {
        if (&node == m_levels.front().node) {
            return true;
        }
        auto const entry = node.RetainCount() > 1 ? m_shared.find(&node) : m_shared.end();
        return entry != m_shared.end() && entry->second == kOnPath;
    }

    std::vector<Level> m_levels;
    std::unordered_map<VTree const*, long> m_shared; // the rows below it, or `kOnPath`
    bool m_isCircular = false;
};

} // namespace detail

using detail::TreePath;

long VTree::OpaqueSpan() const {
    long rows = 1;
    TreePath path;
    for (path.Enter(*this, rows); !path.IsEmpty();) {
        if (path.IsAtEnd()) {
            path.Leave(rows);
        } else if (auto const* const child = VObjectCast<VTree>(path.NextChild())) {
            rows = TreePath::Sum(rows, 1);
            if (long const known = path.KnownRowsBelow(*child); known >= 0) {
                rows = TreePath::Sum(rows, known);
            } else {
                path.Enter(*child, rows);
            }
        }
    }
    return rows;
}

VTree* VTree::ObjectForVisibleNodeWithFlatIndex(long index, int* depth) const {
    TreePath path;
    auto const answer = [&path, depth](VTree* node) {
        if (depth) {
            *depth += static_cast<int>(path.Depth()) - 1;
        }
        return node;
    };
    long row = 0;
    for (path.Enter(*this, row); index >= 0 && !path.IsEmpty();) {
        if (path.IsAtEnd()) {
            long const hidden = path.Top().hidden;
            if (path.Depth() > 1 && index < TreePath::Sum(row, hidden)) {
                return answer(nullptr);
            }
            row = TreePath::Sum(row, hidden);
            path.Leave(row);
            continue;
        }
        VObject* const object = path.NextChild();
        if (auto* const child = VObjectCastExact<VTree>(object)) {
            if (row == index) {
                return answer(child);
            }
            ++row;
            long const known = path.KnownRowsBelow(*child);
            if (known >= 0 && known <= index - row) {
                row += known;
            } else {
                path.Enter(*child, row);
            }
        } else if (auto const* const other = VObjectCast<VTree>(object)) {
            path.Top().hidden = TreePath::Sum(path.Top().hidden, other->OpaqueSpan());
        }
    }
    return nullptr;
}

VTree::RowIterator::RowIterator(VTree const& top) : m_path(std::make_unique<TreePath>()) {
    m_path->Enter(top, 0);
    ++*this;
}

VTree::RowIterator::RowIterator(RowIterator&&) noexcept = default;
VTree::RowIterator& VTree::RowIterator::operator=(RowIterator&&) noexcept = default;
VTree::RowIterator::~RowIterator() = default;

VTree::RowIterator& VTree::RowIterator::operator++() {
    if (auto const last = std::move(m_held)) {
        m_path->Enter(*last, 0);
    }
    m_row.node = nullptr;
    while (!m_path->IsEmpty()) {
        if (m_path->IsAtEnd()) {
            m_hidden += m_path->Top().hidden;
            m_path->Leave(0);
            continue;
        }
        VObject* const object = m_path->NextChild();
        if (auto* const child = VObjectCastExact<VTree>(object)) {
            m_held.Exchange(child);
            m_row = {child, m_row.index + 1 + std::exchange(m_hidden, 0),
                     static_cast<int>(m_path->Depth()) - 1};
            break;
        }
        if (auto const* const other = VObjectCast<VTree>(object)) {
            m_path->Top().hidden += other->OpaqueSpan();
        }
    }
    return *this;
}

VObject* VTree::ObjectAtIndex(long index) const {
    return ObjectForVisibleNodeWithFlatIndex(index, nullptr);
}

} // namespace VFoundation
