#include "examples/catalogue/Catalogue.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace catalogue {

namespace {

/// Warns of what a file or archive could not do.
template <class Source>
bool Check(bool isDone, Source const& source) {
    if (!isDone) {
        VLog::TraceAt(VLog::eWarning, "%s\n", source.ErrorDescription().CString());
    }
    return isDone;
}

bool LoadObject(VString const& path, VObject& object) {
    VXMLFile file;
    return Check(file.LoadObject(path.CString(), "Catalogue", object), file);
}

bool SaveObject(VString const& path, VObject const& object) {
    VXMLFile file;
    return Check(file.SaveObject(path.CString(), "Catalogue", object), file);
}

} // namespace

bool Catalogue::Load() {
    bool isWhole = LoadObject(PathOf("photos.xml"), m_photos);
    for (Photo* const photo : m_photos) {
        m_byId[photo->id] = photo;
        m_byPath[photo->path] = photo;
        m_lastId = std::max(m_lastId, photo->id);
    }
    isWhole = LoadFingerprints() && isWhole;
    isWhole = LoadThumbnails() && isWhole;
    return LoadObject(PathOf("similar.xml"), *m_similar) && isWhole;
}

bool Catalogue::Save(std::vector<VObjectRef<Photo>> const& photos) {
    m_photos.RemoveAllObjects();
    for (auto const& photo : photos) {
        if (photo->IsMade()) {
            m_photos.AddObject(photo.Get());
        }
    }
    FindSimilar();
    VGraphPicture picture(*m_similar);
    return SaveThumbnails() && SaveFingerprints() && SaveObject(PathOf("similar.xml"), *m_similar) &&
           Check(picture.WriteDot(PathOf("similar.dot").CString()), picture) &&
           SaveObject(PathOf("photos.xml"), m_photos);
}

bool Catalogue::LoadFingerprints() {
    VAIFile file;
    long const mode = VAIFile::kRead | VAIFile::kChunkSafe | VAIFile::kChecksum;
    if (!Check(file.Open(PathOf("fingerprints.chunks").CString(), mode), file)) {
        return false; // a wrong one would not be noticed
    }
    for (ChunkScope chunk(file); chunk.IsOpen() && chunk.Id() == ChunkId("PRNT"); chunk.Next()) {
        int id = 0;
        unsigned long long fingerprint = 0;
        file >> id >> fingerprint;
        if (auto const found = m_byId.find(id); found != m_byId.end()) {
            found->second->fingerprint = fingerprint;
        }
    }
    return true;
}

bool Catalogue::SaveFingerprints() const {
    VAIFile file;
    long const mode = VAIFile::kWrite | VAIFile::kChecksum | VAIFile::kReplaceOnClose;
    bool const isOpen = file.Open(PathOf("fingerprints.chunks").CString(), mode);
    for (Photo const* const photo : m_photos) {
        ChunkScope const chunk(file, "PRNT");
        file << photo->id << *photo->fingerprint;
    }
    return Check(isOpen && file.Close(), file);
}

bool Catalogue::LoadThumbnails() {
    VArchive archive;
    bool const isWhole = Check(archive.LoadFile(PathOf("thumbnails.archive").CString()), archive);
    VImageReader reader;
    for (long i = 0; i < std::min(archive.Infos().Count(), archive.Data().Count()); ++i) {
        char const* const name = archive.Infos().ObjectAtIndexTyped(i)->Path();
        VData* const png = archive.Data().ObjectAtIndexTyped(i);
        auto const found = m_byId.find(std::atoi(name));
        if (!isWhole && !reader.ReadData(*png)) { // a PNG file has checksums of its own
            VLog::TraceAt(VLog::eWarning, "thumbnail %s: %s\n", name, reader.ErrorDescription().CString());
        } else if (found != m_byId.end()) {
            found->second->thumbnail.Exchange(png);
        }
    }
    return isWhole;
}

bool Catalogue::SaveThumbnails() const {
    VArchive archive;
    for (Photo const* const photo : m_photos) {
        archive.AddFile((std::to_string(photo->id) + ".png").c_str(), photo->thumbnail.Get());
    }
    return Check(archive.SaveFile(PathOf("thumbnails.archive").CString()), archive);
}

VObjectRef<Photo> Catalogue::PhotoFor(VFolderListing::Entry const& entry) {
    auto const size = static_cast<long long>(entry.size);
    auto const found = m_byPath.find(entry.path);
    if (found != m_byPath.end() && found->second->IsMade() && found->second->size == size &&
        found->second->modified == entry.modified) {
        return VObjectRef<Photo>::Retaining(found->second);
    }
    auto photo = MakeObject<Photo>();
    photo->id = ++m_lastId;
    photo->path = entry.path;
    photo->size = size;
    photo->modified = entry.modified;
    return photo;
}

void Catalogue::FindSimilar() {
    constexpr int kMostDifferences = 6; // of 64 squares
    m_similar = MakeObject<VGraph>();
    for (Photo const* const photo : m_photos) {
        VGraphNode* const node = m_similar->AddNamedNode(photo->path);
        for (long i = 0; i < m_similar->NodeCount() - 1; ++i) {
            auto const differences = *photo->fingerprint ^ *m_photos.ObjectAtIndexTyped(i)->fingerprint;
            if (std::popcount(differences) <= kMostDifferences) {
                m_similar->Connect(m_similar->Nodes().ObjectAtIndexTyped(i), node);
            }
        }
    }
}

} // namespace catalogue
