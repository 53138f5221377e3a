// A photo catalogue: finds the pictures in a folder, makes thumbnails of them on several threads, finds those that look
// alike, and keeps all of it in files.
//   example_catalogue make <folder with pictures> <folder of the catalogue> [<threads>]
//   example_catalogue show <folder of the catalogue>
// Ctrl-C ends the making: what was made until then is in the catalogue, and the next run makes the rest.

#include "examples/catalogue/Catalogue.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>

using namespace catalogue;

namespace {

enum ExitStatus : int { kDone = 0, kDamaged = 1, kWrongUse = 2, kFailed = 3, kInterrupted = 130 };

std::atomic<bool> s_isInterrupted{false}; // set by a signal handler

/// Makes what is missing on the threads of a pool, small files first. Messages tell another thread, which draws a bar.
void MakeMissing(std::vector<VObjectRef<Photo>> const& photos, int threads) {
    long const count = std::count_if(photos.begin(), photos.end(), [](auto& it) { return !it->IsMade(); });
    long done = 0;
    auto const bar = VMessageCenter::MakeReceiver([&](VMessage const& message) {
        auto const share = static_cast<int>(20 * ++done / count);
        VString path;
        message.FirstArg().GetString(path);
        std::printf("\r[%-20.*s] %li of %li: %s\033[K", share, "####################", done, count,
                    path.CString());
        std::fflush(stdout);
    });
    StartedCenter const reporter(static_cast<int>(count));
    VJobPool pool(threads);
    for (auto const& photo : photos) {
        auto const make = [photo, &bar, &reporter] {
            if (!s_isInterrupted) {
                if (VString const reason = photo->Make(); !reason.IsEmpty()) {
                    VLog::TraceAt(VLog::eWarning, "%s\n", reason.CString());
                }
                VMessage message;
                message.FirstArg().SetValueToString(photo->path);
                static_cast<void>(reporter->MessageDelay(bar.Get(), &message)); // there is room for all
            }
        };
        if (!photo->IsMade()) {
            pool.Run(make, -static_cast<int>(photo->size >> 16));
        }
    }
    pool.WaitForAll();
    reporter->FinishCenter();
    std::fputs(done > 0 ? "\n" : "", stdout);
}

int Make(std::string const& pictures, std::string const& folder, int threads) {
    if (auto const made = VFileSystem::MakeFolder(folder); !made) {
        VLog::TraceAt(VLog::eError, "%s\n", made.ErrorDescription().CString());
        return kFailed;
    }
    auto const log = MakeObject<VLogFile>((folder + "/catalogue.log").c_str());
    log->SetShowTimeOfDay(true);
    log->SetTee(MakeObject<VLog>().Get()); // which writes to the standard error stream
    log->StartLoggingThread();
    VLog::SetLog(log.Get());
    std::signal(SIGINT, [](int) { s_isInterrupted = true; });

    Catalogue catalogue(folder);
    if (VFileManager::DefaultManager()->FileExistsAtPath(folder + "/photos.xml", nullptr)) {
        catalogue.Load();
    }
    VFolderListing::Options options;
    options.isRecursive = true;
    options.filter = [](auto const& entry) { return VImageReader::HasPictureExtension(entry.path); };
    VFolderListing const listing(pictures, options);
    if (!listing.Failures().empty()) { // the catalogue would lose what is not seen
        VLog::TraceAt(VLog::eError, "%s\n", listing.Failures()[0].ErrorDescription().CString());
        return kFailed;
    }
    std::vector<VObjectRef<Photo>> photos;
    for (auto const& entry : listing.Entries()) {
        photos.push_back(catalogue.PhotoFor(entry));
    }
    MakeMissing(photos, threads);
    if (!catalogue.Save(photos)) {
        return kFailed;
    }
    std::printf("%zu pictures, %li in the catalogue%s\n", photos.size(), catalogue.Photos().Count(),
                s_isInterrupted ? "; interrupted, the next run makes the rest" : "");
    return s_isInterrupted ? kInterrupted : kDone;
}

int Show(std::string const& folder) {
    Catalogue catalogue(folder);
    bool const isWhole = catalogue.Load();
    for (Photo const* const photo : catalogue.Photos()) {
        std::printf("%s: %i x %i, %s\n", photo->path.CString(), photo->width, photo->height,
                    photo->IsMade() ? "made" : "to be made anew");
    }
    std::printf("%li photos, %li pairs look alike\n", catalogue.Photos().Count(),
                catalogue.Similar().EdgeCount());
    return isWhole ? kDone : kDamaged;
}

} // namespace

int main(int argc, char** argv) {
    LibraryScope library;
    VLog::SetShowRoutineLines(false);
    RegisterClasses<Photo>(); // or a document would bring no photos back
    std::string const action = argc > 2 ? argv[1] : "";
    if (action == "make" && (argc == 4 || argc == 5)) {
        return Make(argv[2], argv[3], argc == 5 ? std::atoi(argv[4]) : 0);
    }
    if (action == "show" && argc == 3) {
        return Show(argv[2]);
    }
    std::fprintf(stderr, "usage: %s make <pictures> <catalogue> [<threads>] | show <catalogue>\n", argv[0]);
    return kWrongUse;
}
