#include "foundation/persistence/VArchive.h"

#include "foundation/core/VException.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/strings/VString.h"

#include <exception>

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

/// Takes the first loss that is added to a file's report while it lives, also when an exception ends loading.
class LoadWatch {
  public:
    LoadWatch(IAIFile& file, std::string& error)
        : m_report(file.Report()), m_before(m_report ? m_report->Entries().size() : 0), m_error(error) {}
    LoadWatch(LoadWatch const&) = delete;
    LoadWatch& operator=(LoadWatch const&) = delete;
    ~LoadWatch() {
        try {
            if (m_report && m_report->Entries().size() > m_before) {
                m_error = LoadReport::TextOf(m_report->Entries()[m_before]);
            }
        } catch (std::exception const&) {
            m_error.clear();
        }
    }

  private:
    LoadReport const* m_report;
    std::size_t m_before;
    std::string& m_error;
};

} // namespace

VClass* VArchive::ms_theClass = nullptr;

void VArchive::AddFile(char const* path, VData* data) {
    if (!data) {
        return;
    }
    auto const info = MakeObject<VFileInfo>();
    info->SetPath(path);
    info->SetFlag(false); // a pooled record keeps the old one
    m_infos.AddObject(info.Get());
    m_data.AddObject(data);
}

bool VArchive::Serialize(IAIFile& file) {
    m_error.clear();
    if (VObject::Serialize(file)) {
        LoadWatch const watch(file, m_error);
        return Load(file);
    }
    bool const stored = Store(file);
    if (!stored) {
        m_error = file.ErrorDescription().CString();
    }
    return stored;
}

bool VArchive::SaveFile(char const* path) {
    VAIFile file;
    bool const isOpen = file.Open(path, VAIFile::kWrite | VAIFile::kChecksum | VAIFile::kReplaceOnClose);
    bool const isSaved = isOpen && Store(file) && file.Close();
    m_error = isSaved ? "" : file.ErrorDescription().CString();
    return isSaved;
}

bool VArchive::LoadFile(char const* path) {
    constexpr long kSafe = VAIFile::kRead | VAIFile::kChunkSafe;
    m_infos.RemoveAllObjects();
    m_data.RemoveAllObjects();
    m_error.clear();
    VAIFile file;
    if (!file.Open(path, kSafe | VAIFile::kChecksum)) {
        m_error = file.ErrorDescription().CString();
        if (file.GetLastError() != VAIFile::eDamaged || !file.Open(path, kSafe)) {
            return false;
        }
    }
    try {
        Load(file);
    } catch (VException const& exception) {
        file.NoteLoss(LoadReport::kNotMade, exception.what());
    }
    auto const add = [this](std::string const& text) { m_error += (m_error.empty() ? "" : "; ") + text; };
    if (file.ReadError() != 0) {
        add(file.ErrorDescription().CString());
    }
    if (!file.Report()->IsEmpty()) {
        auto const& losses = file.Report()->Entries();
        unsigned long const others = file.Report()->Count() - 1;
        add(std::string(path) + " at offset " + (losses.empty() ? "" : LoadReport::TextOf(losses.front())) +
            (others > 0 ? ", and " + std::to_string(others) + " more" : ""));
    }
    return m_error.empty();
}

VString VArchive::ErrorDescription() const {
    return VString(m_error.c_str());
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
        bool hasInfos = false;
        bool hasData = false;
        while (file.ChunkRemaining()) {
            ChunkScope const part(file);
            if (!part.IsOpen()) {
                break;
            }
            if (part.Id() == ChunkId(kDataId)) {
                hasData = m_data.Serialize(file);
            } else if (part.Id() == ChunkId(kInfosId)) {
                hasInfos = m_infos.Serialize(file);
            } else {
                file.NoteChunk(LoadReport::kWrongKind, part.Id());
            }
        }
        if (!hasInfos) {
            file.NoteLoss(LoadReport::kNotRead, kInfosId);
        }
        if (!hasData) {
            file.NoteLoss(LoadReport::kNotRead, kDataId);
        }
    } else {
        file.NoteChunk(LoadReport::kWrongKind, archive.Id());
    }
    return true;
}

} // namespace VFoundation
