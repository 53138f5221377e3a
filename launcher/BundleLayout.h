#pragma once

namespace Launcher {

/// Where the launcher finds the programs that it may start. The launcher itself is
/// <Bundle>.app/Contents/MacOS/<launcher>: removing `kBundleFolderDepth` components from that path gives the
/// folder of the bundle, removing `kContentsDepth` the bundle's Contents.
inline constexpr int kBundleFolderDepth = 4;
inline constexpr int kContentsDepth = 2;

inline constexpr char kGuideBesideBundle[] = "ZephGuide.app/Contents/MacOS/ZephGuide";
inline constexpr char kInstallerInContents[] =
    "Resources/QuillmarkInstallSystem.app/Contents/MacOS/QuillmarkInstallSystem";
inline constexpr char kUninstallerInContents[] =
    "Resources/QuillmarkUninstallSystem.app/Contents/MacOS/QuillmarkUninstallSystem";

/// The first argument of the started program; the second is the name of the user who started the launcher.
inline constexpr char kUserNameOption[] = "-uname";

} // namespace Launcher
