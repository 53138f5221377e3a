#include "foundation/host/VDiskInfo.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/host/internal/MountTable_linux.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace VFoundation;

/// The volumes of a table as "name=path", with an exclamation mark after those that were asked for their size.
std::string VolumesOf(std::string const& mountTable) {
    testing_support::ScratchFile const table;
    table.SetBytes(mountTable);
    std::string found;
    for (auto const& volume : MountTable::Volumes(table.Path(), "/nowhere")) {
        found += volume.name + "=" + volume.mountPath + (volume.totalBytes ? "! " : " ");
    }
    return found;
}

TEST(VDiskInfo, ListsWhatAUserWouldCallAVolume) {
    EXPECT_EQ(VolumesOf("22 27 0:21 / /proc rw - proc proc rw\n"
                        "27 1 0:40 / / rw - overlay overlay rw\n" // a kernel file system, but the root
                        "30 27 8:1 / /etc/hosts rw - ext4 /dev/sda1 rw\n" // one bound file
                        "31 27 8:1 / /tmp rw - ext4 /dev/sda1 rw\n"
                        "32 27 8:1 /sub /usr rw - ext4 /dev/sda1 rw\n" // the same device again
                        "35 27 0:50 / /no/such\\040share rw - nfs4 server:/export rw\n"
                        "36 27 0:51 / /no/fuse rw - fuse.sshfs host: rw\n"
                        "37 27 8:4 / /no/such/folder rw - ext4 /dev/sda4 rw\n"
                        "38 27 0:52 / /run rw - tmpfs tmpfs rw\n"
                        "39 27 8:5 / /home rw - fuseblk /dev/sda5 rw\n"),
              "/=/! tmp=/tmp! such share=/no/such share fuse=/no/fuse home=/home ")
        << "only those are asked for their size that answer at once";
    EXPECT_TRUE(MountTable::Volumes("/no/such/table", "/nowhere").empty());
}

TEST(VDiskInfo, ListsNoVolumeThatAnotherHides) {
    EXPECT_EQ(VolumesOf("1 1 0:2 / / rw - rootfs rootfs rw\n"       // covered by the real root
                        "23 27 8:9 / /dev rw - ext4 /dev/sda9 rw\n" // in the root that stands after it
                        "27 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                        "33 27 8:2 / /var rw - ext4 /dev/sda2 rw\n" // covered at the same folder
                        "34 27 8:3 / /var rw - ext4 /dev/sda3 rw\n"
                        "40 27 8:4 / /usr/lib rw - ext4 /dev/sda4 rw\n" // covered by one above it
                        "41 40 8:5 / /usr/lib/tmpfiles.d rw - ext4 /dev/sda5 rw\n"
                        "42 27 8:6 / /usr rw - ext4 /dev/sda6 rw\n"
                        "43 42 8:7 / /usr/share rw - ext4 /dev/sda7 rw\n"
                        "44 27 8:8 / /us rw - ext4 /dev/sda8 rw\n" // not above any of them, and no folder
                        "45 34 8:10 / /var/lib rw - ext4 /dev/sda10 rw\n"
                        "46 45 8:11 / /var/lib rw - ext4 /dev/sda11 rw\n"),
              "dev=/dev! /=/! var=/var! usr=/usr! share=/usr/share! lib=/var/lib! ");
}

TEST(VDiskInfo, DecodesLabels) {
    EXPECT_EQ(MountTable::DecodeLabel("My\\x20Disk\\x2f\\x5c"), "My Disk/\\");
    // What is no escape stands for itself.
    for (char const* const plain : {"a\\x2", "\\x+5", "\\x 5", "\\xg0", "\\x00", "\\", "x20"}) {
        EXPECT_EQ(MountTable::DecodeLabel(plain), plain);
    }
    EXPECT_EQ(MountTable::DecodeLabel(std::string_view("\\x41", 3)), "\\x4")
        << "what stands after the end is no part of it";
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

TEST(VDiskInfo, MakesBothTablesOrNone) {
    testing_support::FailEachAllocation([] {
        VDiskInfo::UninitializeClass();
        try {
            VDiskInfo::InitializeVolumeInformation();
        } catch (...) {
            EXPECT_EQ(VDiskInfo::VDISK_INFO_VOLUME_NAMES, nullptr);
            EXPECT_EQ(VDiskInfo::VDISK_INFO_VOLUME_INFO, nullptr);
            throw;
        }
        EXPECT_EQ(VDiskInfo::VDISK_INFO_VOLUME_NAMES == nullptr,
                  VDiskInfo::VDISK_INFO_VOLUME_INFO == nullptr);
    });
    EXPECT_NE(VDiskInfo::VDISK_INFO_VOLUME_NAMES, nullptr);
    VDiskInfo::UninitializeClass();
}

} // namespace
