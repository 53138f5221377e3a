#include "foundation/host/VDiskInfo.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/host/internal/HostServices.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace VFoundation;

TEST(VDiskInfo, ListsWhatAUserWouldCallAVolume) {
    testing_support::ScratchFile const table;
    table.SetBytes("22 27 0:21 / /proc rw - proc proc rw\n"
                   "27 1 0:40 / / rw - overlay overlay rw\n"         // a kernel file system, but the root
                   "30 27 8:1 / /etc/hosts rw - ext4 /dev/sda1 rw\n" // one bound file
                   "31 27 8:1 / /tmp rw - ext4 /dev/sda1 rw\n"
                   "32 27 8:1 /sub /usr rw - ext4 /dev/sda1 rw\n" // the same device again
                   "33 27 8:2 / /var rw - ext4 /dev/sda2 rw\n"    // covered by the next
                   "34 27 8:3 / /var rw - ext4 /dev/sda3 rw\n"
                   "35 27 0:50 / /no/such\\040share rw - nfs4 server:/export rw\n"
                   "36 27 0:51 / /no/fuse rw - fuse.sshfs host: rw\n"
                   "37 27 8:4 / /no/such/folder rw - ext4 /dev/sda4 rw\n"
                   "38 27 0:52 / /run rw - tmpfs tmpfs rw\n");
    std::string found;
    for (auto const& volume : HostServices::MountedVolumes(table.Path(), "/nowhere")) {
        found += volume.name + "=" + volume.mountPath + (volume.totalBytes ? "!" : "") + " ";
    }
    EXPECT_EQ(found, "/=/! tmp=/tmp! var=/var! such share=/no/such share fuse=/no/fuse ")
        << "only those are asked for their size that answer at once";
    EXPECT_TRUE(HostServices::MountedVolumes("/no/such/table").empty());
}

TEST(VDiskInfo, ReadsTheTableOnce) {
    VDiskInfo::InitializeVolumeInformation();
    VObjectArray* const names = VDiskInfo::VDISK_INFO_VOLUME_NAMES;
    VObjectArray* const infos = VDiskInfo::VDISK_INFO_VOLUME_INFO;
    VDiskInfo::InitializeVolumeInformation();
    EXPECT_EQ(VDiskInfo::VDISK_INFO_VOLUME_NAMES, names);
    ASSERT_EQ(names->Count(), infos->Count());
    bool hasRoot = false;
    for (long i = 0; i < infos->Count(); ++i) {
        auto const& info = static_cast<VDiskInfo const&>(*infos->ObjectAtIndex(i));
        EXPECT_TRUE(names->ObjectAtIndex(i)->IsEqual(info.VolumeName()));
        EXPECT_EQ(info.UsedBytes() + info.FreeBytes(), info.TotalBytes());
        hasRoot = hasRoot || info.MountPath() == "/";
    }
    EXPECT_TRUE(hasRoot);
    VDiskInfo::UninitializeClass();
    VDiskInfo::UninitializeClass();
    EXPECT_EQ(VDiskInfo::VDISK_INFO_VOLUME_INFO, nullptr);
    EXPECT_STREQ(VDiskInfo().Description().CString(), "VolumeName [Unknown], Size [0], Free [0]");
}

} // namespace
