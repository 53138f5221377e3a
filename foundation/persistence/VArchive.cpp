#include "foundation/persistence/VArchive.h"

namespace VFoundation {

namespace {

constexpr char kArchiveId[] = "VArc";
constexpr char kInfosId[] = "Info";
constexpr char kDataId[] = "Data";

bool StorePart(IAIFile& file, char const* id, VObject& part) {
    ChunkScope chunk(file, id);
    bool const stored = chunk.IsOpen() && part.Serialize(file);
    return chunk.Close() && stored;
}

} // namespace

VClass* VArchive::ms_theClass = nullptr;

bool VArchive::Serialize(IAIFile& file) {
    return VObject::Serialize(file) ? Load(file) : Store(file);
}

bool VArchive::Store(IAIFile& file) {
    ChunkScope archive(file, kArchiveId);
    bool const stored =
        archive.IsOpen() && StorePart(file, kInfosId, m_infos) && StorePart(file, kDataId, m_data);
    return archive.Close() && stored;
}

bool VArchive::Load(IAIFile& file) {
    m_infos.RemoveAllObjects();
    m_data.RemoveAllObjects();
    ChunkScope const archive(file);
    if (archive.IsOpen() && archive.Id() == ChunkId(kArchiveId)) {
        while (file.ChunkRemaining()) {
            ChunkScope const part(file);
            if (!part.IsOpen()) {
                break;
            }
            if (part.Id() == ChunkId(kDataId)) {
                m_data.Serialize(file);
            } else if (part.Id() == ChunkId(kInfosId)) {
                m_infos.Serialize(file);
            }
        }
    }
    return true;
}

} // namespace VFoundation
