#include "foundation/containers/VTree.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/VObjectCast.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <utility>
#include <vector>

namespace VFoundation {

VClass* VTree::ms_theClass = nullptr;

VTree::VTree(VClass* cls) : Registered(cls) {
}

VTree::~VTree() {
    ReleaseChildren();
}

VTree* VTree::New() {
    return new VTree;
}

// Building

bool VTree::AddLeaf(VTree* child) {
    if (!child || child == this || (child->HasChildren() && IsBelow(child))) {
        return false;
    }
    if (!m_pChildren) {
        m_pChildren = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    }
    if (!m_pChildren->AddObject(child)) {
        return false;
    }
    child->m_pParent = this;
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
    m_pData.Exchange(nullptr);
    ReleaseChildren();
    m_bOpaque = false;
}

bool VTree::HasChildren() const noexcept {
    return m_pChildren && m_pChildren->Count() > 0;
}

bool VTree::IsBelow(VTree const* node) const noexcept {
    VTree const* above = this;
    while (above && above != node) {
        above = above->m_pParent;
    }
    return above != nullptr;
}

/// Lets go of the children and of all below them that die with them, one node after the other: each is held while
/// its parent dies, in a list through the links to the parents, which they lose.
void VTree::ReleaseChildren() {
    VTree* leaving = nullptr;
    auto const take = [&leaving](VTree& node) {
        VObjectRef<VObjectArray> const children = std::move(node.m_pChildren);
        for (long i = 0; children && i < children->Count(); ++i) {
            auto* const child = VObjectCast<VTree>(children->ObjectAtIndex(i));
            if (child && child->m_pParent == &node) {
                child->Retain();
                child->m_pParent = std::exchange(leaving, child);
            }
        }
    };
    take(*this);
    while (leaving) {
        VTree* const node = leaving;
        leaving = std::exchange(node->m_pParent, nullptr);
        if (node->RetainCount() == 1) {
            take(*node);
        }
        node->Release();
    }
}

// Rows

long VTree::OpaqueSpan() const {
    long rows = 0;
    std::vector<VTree const*> visible{this};
    while (!visible.empty()) {
        VTree const* const node = visible.back();
        visible.pop_back();
        ++rows;
        if (node->m_bOpaque || !node->m_pChildren) {
            continue;
        }
        VCriticalSectionScope scope;
        VObject* const* const children = node->m_pChildren->GetObjects(scope);
        for (long i = 0; i < node->m_pChildren->Count(); ++i) {
            auto const* const child = VObjectCast<VTree>(children[i]);
            if (child && child != node) {
                visible.push_back(child);
            }
        }
    }
    return rows;
}

VTree* VTree::ObjectForVisibleNodeWithFlatIndex(long index, int* depth) const {
    struct Level {
        VObjectArray const* children;
        long next;   // the child to look at
        long hidden; // what children without rows add to the span
    };
    std::vector<Level> levels;
    auto const enter = [&levels](VTree const& node) {
        if (!node.m_bOpaque && node.HasChildren()) {
            levels.push_back({node.m_pChildren.Get(), 0, 0});
        }
    };
    auto const answer = [&levels, depth](VTree* node) {
        if (depth) {
            *depth += static_cast<int>(levels.size()) - 1;
        }
        return node;
    };
    long row = 0;
    for (enter(*this); index >= 0 && !levels.empty();) {
        Level& level = levels.back();
        if (level.next == level.children->Count()) {
            if (levels.size() > 1 && index < row + level.hidden) {
                return answer(nullptr);
            }
            row += level.hidden;
            levels.pop_back();
            continue;
        }
        VObject* const object = level.children->ObjectAtIndex(level.next++);
        if (auto* const child = VObjectCastExact<VTree>(object)) {
            if (row == index) {
                return answer(child);
            }
            ++row;
            enter(*child);
        } else if (auto const* const other = VObjectCast<VTree>(object)) {
            level.hidden += other->OpaqueSpan();
        }
    }
    return nullptr;
}

VObject* VTree::ObjectAtIndex(long index) const {
    return ObjectForVisibleNodeWithFlatIndex(index, nullptr);
}

} // namespace VFoundation
