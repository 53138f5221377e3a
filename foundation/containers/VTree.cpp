#include "foundation/containers/VTree.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/VObjectCast.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <algorithm>
#include <cstddef>
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

namespace {

/// The way from the node that was asked down to the node whose children are being walked.
class Path {
  public:
    struct Level {
        VTree const* node;
        long next;      // the child to look at
        long hidden;    // what children without rows add to the span
        bool isRegular; // every node so far is the parent of the next
    };

    /// Begins with the children of `node` if it shows any.
    void Enter(VTree const& node) {
        if (!node.IsOpaque() && node.Children() && node.Children()->Count() > 0) {
            bool const isRegular = IsEmpty() || (Top().isRegular && node.Parent() == Top().node);
            m_levels.push_back({&node, 0, 0, isRegular});
        }
    }
    void Leave() { m_levels.pop_back(); }

    bool IsEmpty() const noexcept { return m_levels.empty(); }
    std::size_t Depth() const noexcept { return m_levels.size(); }
    Level& Top() { return m_levels.back(); }
    bool IsAtEnd() { return Top().next >= Top().node->Children()->Count(); }

    /// The next child and whether it counts; one that is on the path itself is null.
    VObject* NextChild() {
        Level& top = Top();
        VCriticalSectionScope scope;
        VObject* const* const children = top.node->Children()->GetObjects(scope);
        VObject* const object = children[top.next++];
        auto const* const child = VObjectCast<VTree>(object);
        return child && Contains(*child) ? nullptr : object;
    }

  private:
    /// On a regular path only the first node can have the last one as its parent again.
    bool Contains(VTree const& node) const noexcept {
        Level const& top = m_levels.back();
        if (top.isRegular && node.Parent() == top.node) {
            return &node == m_levels.front().node;
        }
        return std::any_of(m_levels.begin(), m_levels.end(),
                           [&node](Level const& level) { return level.node == &node; });
    }

    std::vector<Level> m_levels;
};

} // namespace

long VTree::OpaqueSpan() const {
    long rows = 1;
    Path path;
    for (path.Enter(*this); !path.IsEmpty();) {
        if (path.IsAtEnd()) {
            path.Leave();
        } else if (auto const* const child = VObjectCast<VTree>(path.NextChild())) {
            ++rows;
            path.Enter(*child);
        }
    }
    return rows;
}

VTree* VTree::ObjectForVisibleNodeWithFlatIndex(long index, int* depth) const {
    Path path;
    auto const answer = [&path, depth](VTree* node) {
        if (depth) {
            *depth += static_cast<int>(path.Depth()) - 1;
        }
        return node;
    };
    long row = 0;
    for (path.Enter(*this); index >= 0 && !path.IsEmpty();) {
        if (path.IsAtEnd()) {
            long const hidden = path.Top().hidden;
            if (path.Depth() > 1 && index < row + hidden) {
                return answer(nullptr);
            }
            row += hidden;
            path.Leave();
            continue;
        }
        VObject* const object = path.NextChild();
        if (auto* const child = VObjectCastExact<VTree>(object)) {
            if (row == index) {
                return answer(child);
            }
            ++row;
            path.Enter(*child);
        } else if (auto const* const other = VObjectCast<VTree>(object)) {
            path.Top().hidden += other->OpaqueSpan();
        }
    }
    return nullptr;
}

VObject* VTree::ObjectAtIndex(long index) const {
    return ObjectForVisibleNodeWithFlatIndex(index, nullptr);
}

} // namespace VFoundation
