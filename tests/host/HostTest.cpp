#include "foundation/containers/VObjectArray.h"
#include "foundation/host/HostServices.h"
#include "foundation/host/VDiskInfo.h"
#include "foundation/host/VFpuMode.h"
#include "foundation/host/VHostArchitecture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <pwd.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace VFoundation;

std::vector<HostServices::MountedVolume> VolumesOf(std::string const& table) {
    std::string path = (std::filesystem::temp_directory_path() / "mounts-XXXXXX").string();
    int const descriptor = ::mkstemp(path.data());
    EXPECT_GE(descriptor, 0);
    ::close(descriptor);
    std::ofstream(path) << table;
    auto volumes = HostServices::MountedVolumes(path.c_str(), "/nowhere");
    std::filesystem::remove(path);
    return volumes;
}

TEST(Volumes, AreWhatAUserWouldCallSo) {
    auto const volumes =
        VolumesOf("22 27 0:21 / /proc rw - proc proc rw\n"
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
    ASSERT_EQ(volumes.size(), 5U);
    char const* const expected[][2] = {
        {"/", "/"}, {"tmp", "/tmp"}, {"var", "/var"}, {"such share", "/no/such share"}, {"fuse", "/no/fuse"}};
    for (std::size_t i = 0; i < volumes.size(); ++i) {
        EXPECT_EQ(volumes[i].name, expected[i][0]);
        EXPECT_EQ(volumes[i].mountPath, expected[i][1]);
        EXPECT_EQ(volumes[i].totalBytes != 0, i < 3) << "only those are asked that answer at once";
    }
    EXPECT_TRUE(HostServices::MountedVolumes("/no/such/table").empty());
}

TEST(Volumes, AreReadOnce) {
    VDiskInfo::UninitializeClass();
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
        EXPECT_EQ(info.RetainCount() + names->ObjectAtIndex(i)->RetainCount(), 2);
        EXPECT_EQ(info.UsedBytes() + info.FreeBytes(), info.TotalBytes());
        EXPECT_EQ(info.Kind(), VDiskInfo::kMountedVolume);
        hasRoot = hasRoot || info.MountPath() == "/";
    }
    EXPECT_TRUE(hasRoot);
    VDiskInfo::UninitializeClass();
    VDiskInfo::UninitializeClass();
    EXPECT_EQ(VDiskInfo::VDISK_INFO_VOLUME_INFO, nullptr);

    VString text;
    VDiskInfo().GetDescription(text);
    EXPECT_STREQ(text.CString(), "VolumeName [Unknown], Size [0], Free [0]");
}

TEST(Host, SwapsBytes) {
    unsigned char bytes[] = {1, 2, 3, 4};
    VHostArchitecture::Swap4Bytes(bytes);
    VHostArchitecture::Swap2Bytes(bytes);
    EXPECT_EQ(std::memcmp(bytes, "\3\4\2\1", 4), 0);
    VHostArchitecture::Swap4Bytes(nullptr);
    unsigned short const one = 1;
    EXPECT_EQ(VHostArchitecture::IsHostBigEndian(), reinterpret_cast<unsigned char const&>(one) == 0);
}

TEST(Host, TellsTheUserNameIntoAnyBuffer) {
    ::setenv("USER", "somebody else", 1);
    ::setenv("LOGNAME", "somebody else", 1);
    char name[1024];
    std::memset(name, '#', sizeof name);
    VHostArchitecture::UserName(name, sizeof name);
    struct passwd const* const entry = ::getpwuid(::getuid());
    ASSERT_NE(entry, nullptr);
    if (::getuid() != 0) { // a login session may have another name for root
        EXPECT_STREQ(name, entry->pw_name);
    }
    EXPECT_STRNE(name, "somebody else");
    EXPECT_EQ(std::count(std::begin(name), std::end(name), '\0'),
              static_cast<long>(sizeof name - std::strlen(name)));

    char small[] = "####";
    VHostArchitecture::UserName(small, 3);
    EXPECT_EQ(std::strncmp(small, name, 2), 0);
    EXPECT_EQ(small[2], '\0');
    EXPECT_EQ(small[3], '#');
    VHostArchitecture::UserName(small, 1);
    EXPECT_STREQ(small, "");
    small[0] = '#';
    VHostArchitecture::UserName(small, 0);
    EXPECT_EQ(small[0], '#');
    VHostArchitecture::UserName(nullptr, 10);
}

TEST(Host, TakesTheProcessorForGranted) {
    using CPU = VHostArchitecture::VCPUInfo;
    EXPECT_EQ(CPU::InitializeClass(), 0);
    EXPECT_TRUE(CPU::ms_bHasFPU && CPU::ms_bHasMMX && CPU::ms_bHasSSE && CPU::ms_bHasSSE2 &&
                CPU::ms_bHasSSE3);
    EXPECT_FALSE(CPU::ms_bHasHyperThreading);
}

double Third(bool negative) {
    double volatile one = negative ? -1.0 : 1.0;
    double volatile three = 3.0;
    return one / three;
}

TEST(Host, RoundsAsAskedForAScope) {
    double const nearest = Third(false);
    {
        VFpuMode const up(VFpuMode::kUpward);
        double const above = Third(false);
        EXPECT_GT(above, nearest);
        {
            VFpuMode const down(VFpuMode::kDownward);
            EXPECT_EQ(Third(false), nearest);
            EXPECT_EQ(Third(true), -above);
            VFpuMode const zero(VFpuMode::kTowardZero);
            EXPECT_EQ(Third(true), -nearest);
        }
        EXPECT_EQ(Third(false), above) << "the outer mode is back";
    }
    EXPECT_EQ(Third(false), nearest);
}

} // namespace
