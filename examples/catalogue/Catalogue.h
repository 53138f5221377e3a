#pragma once

#include "examples/catalogue/Photo.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace catalogue {

/// The photos of a folder, kept in four files of another one:
///
///     photos.xml           an entry for each photo; what it names is in the other files
///     fingerprints.chunks  ids and fingerprints, with a checksum
///     thumbnails.archive   PNG files "<id>.png", with a checksum
///     similar.xml          a graph of the photos that look alike; similar.dot is the same for Graphviz
///
/// Each file is replaced when the new one is whole, photos.xml last: a program that is stopped at any point leaves a
/// whole catalogue. The log tells of damage, and the photos that it concerns are made anew.
class Catalogue {
  public:
    explicit Catalogue(std::string folder) : m_folder(std::move(folder)) {}

    /// False when something is damaged or missing.
    bool Load();
    /// With those photos that have been made.
    bool Save(std::vector<VObjectRef<Photo>> const& photos);

    VObjectArrayTmpl<Photo> const& Photos() const noexcept { return m_photos; }
    VGraph const& Similar() const noexcept { return *m_similar; }
    /// The photo in the catalogue if the file is still the same, else a new one to be made.
    VObjectRef<Photo> PhotoFor(VFolderListing::Entry const& entry);

  private:
    VString PathOf(char const* name) const { return m_folder + "/" + name; }
    bool LoadFingerprints();
    bool SaveFingerprints() const;
    bool LoadThumbnails();
    bool SaveThumbnails() const;
    void FindSimilar();

    std::string m_folder;
    VObjectArrayTmpl<Photo> m_photos;
    VObjectRef<VGraph> m_similar = MakeObject<VGraph>();
    std::unordered_map<int, Photo*> m_byId;
    std::unordered_map<VString, Photo*, std::hash<VString>, std::equal_to<>> m_byPath;
    int m_lastId = 0;
};

} // namespace catalogue
