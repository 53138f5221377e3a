#pragma once

#include "foundation/containers/VDictionary.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace VFoundation {

class VCriticalSection;
class VGraph;
class VString;

/// One node of a `VGraph`: properties for the application's data, such as its place on the screen, an id and a
/// number for the application's use.
///
/// Ids: a new node takes the next id of the process. Saving, loading and `VGraph::AssignUniqueIDs` number a graph's
/// nodes from 0; files hold no node ids.
///
/// Ownership: owns its properties. The graph is borrowed; a graph that dies is forgotten by every node that names it,
/// in whichever way the node came to do so.
/// Threads: one thread at a time for a whole graph; nodes may be made on any thread.
class VFOUNDATION_API VGraphNode : public Registered<VGraphNode, VObject> {
  public:
    static constexpr char const* kClassName = "VGraphNode";
    static VClass* ms_theClass;

    explicit VGraphNode(VClass* cls = nullptr);
    VGraphNode(VGraphNode const&) = delete;
    ~VGraphNode() override;

    [[nodiscard]] static VGraphNode* New();
    /// Makes the keys and starts the ids at 1.
    static void InitializeClass();
    static void UninitializeClass();

    /// A new node (owned) of the same class, assigned from this one; null when the class has no factory.
    [[nodiscard]] VGraphNode* Copy() const override;
    /// The properties, as "properties". The node's place in the file stands for its id.
    bool SerializeAsXML(VXMLFile& file) override;

    /// Copies id, number and properties, of which the values are copied too. The node stays in its graph. When a
    /// copy throws, nothing has changed.
    virtual VGraphNode& operator=(VGraphNode const& other);
    /// Whether `other` is this very node.
    virtual bool operator==(VGraphNode const& other) const;

    /// A number for the application's use; 32 bits are kept.
    virtual void SetAttrib(long attrib);
    virtual long Attrib() const;

    /// Called by the graph that takes or lets go of the node; null detaches.
    virtual void SetGraph(VGraph* graph);
    /// The graph that the node was last added to (borrowed), or null.
    virtual VGraph* Graph() const;
    /// The lock that the graph keeps for its users (borrowed); null when detached.
    virtual VCriticalSection* GraphCriticalSection() const;

    virtual long NodeID() const;
    /// 32 bits are kept. Edges learn of it by `VGraph::UpdateEdgeNodeIDs`.
    virtual void SetNodeID(long id);

    VDictionary& Properties() noexcept { return m_properties; }
    VDictionary const& Properties() const noexcept { return m_properties; }

    /// Keys for properties: "nodeID", "screen_XY" and "screen_minimised". Null before `InitializeClass`.
    static VString* ms_keyNodeID;
    static VString* ms_keyScreenXY;
    static VString* ms_keyScreenMinimised;
    /// The id that the next new node takes. Relaxed: a number of its own.
    static std::atomic<std::int32_t> ms_masterGraphNodeID;

  private:
    VDictionary m_properties;
    std::int32_t m_nodeID;
    std::int32_t m_attrib = 0;
    std::shared_ptr<VGraph*> m_graph; // shared with the graph, which clears it
};

} // namespace VFoundation
