// Lets the Nth allocation of a piece of work fail, or the Nth and all after it, for every N. The work may then end
// as it says it can fail, or with an exception; afterwards everything works, and nothing is left over.
//
// In a long row of allocations of one size, as a pool's fill is, only the first, the last and every 97th fail, and
// slow work is not tried for every N. With VFOUNDATION_FULL_SWEEP=1 in the environment it is (scripts/sweep.sh).

#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/VGarbageCan.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/graph/VGraph.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/log/VLog.h"
#include "foundation/log/VLogFile.h"
#include "foundation/numerics/VFloatVectorMapXY.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VArchive.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/VBitString.h"
#include "foundation/strings/values/VColour.h"
#include "tests/messaging/TestMessenger.h"
#include "tests/support/Counted.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/Jobs.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>
#include <thread>

#ifdef VFOUNDATION_WITH_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

using namespace VFoundation;
using namespace testing_support;

bool IsFull() {
    return std::getenv("VFOUNDATION_FULL_SWEEP") != nullptr;
}

/// The numbers of the allocations that are to fail: see above for the rows that are sampled.
std::vector<long> Chosen(std::vector<std::size_t> const& sizes) {
    constexpr std::size_t kLongRow = 100;
    constexpr std::size_t kStep = 97;
    std::vector<long> chosen;
    for (std::size_t first = 0; first < sizes.size();) {
        std::size_t end = first;
        while (end < sizes.size() && sizes[end] == sizes[first]) {
            ++end;
        }
        bool const sample = !IsFull() && end - first > kLongRow;
        for (std::size_t i = first; i < end; ++i) {
            if (!sample || i + 1 == end || (i - first) % kStep == 0) {
                chosen.push_back(static_cast<long>(i) + 1);
            }
        }
        first = end;
    }
    return chosen;
}

/// A piece of work: `prepare`, then `work` while allocations fail, then `mend`, which brings back the state before
/// `prepare`. `work` is true when it did everything; it must not use the test framework.
struct Sweep {
    std::function<bool()> work;
    std::function<void()> prepare = [] {};
    std::function<void()> mend = [] {};
    bool mayLeak = false; // where a library that ours calls leaks
    long step = 1;        // slow work is tried again, and fails onward, at every so many failures only

    /// Returns what was written to the standard error stream.
    std::string Run() const {
        testing::internal::CaptureStderr();
        FailEach();
        return testing::internal::GetCapturedStderr();
    }

  private:
    bool Once(long n, bool onward) const {
        prepare();
        bool isDone = false;
        try {
            FailingAllocator::FailAt(n, onward);
            isDone = work();
        } catch (VException const&) {
        } catch (std::bad_alloc const&) {
        }
        FailingAllocator::FailAt(0, false);
        mend();
        return isDone;
    }

    /// The number of blocks, `expected` or less once threads that are on their way out are gone.
    static long LiveBlocks(long expected) {
        for (int i = 0; i < 5000 && FailingAllocator::LiveBlocks() > expected; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return FailingAllocator::LiveBlocks();
    }

    void FailEach() const {
        Once(0, false); // classes and tables exist from here on
        Once(0, false);
        FailingAllocator::RecordSizes();
        ASSERT_TRUE(Once(0, false));
        auto const chosen = Chosen(FailingAllocator::RecordedSizes());
        ASSERT_GT(chosen.size(), 1U) << "nothing was allocated";
        static constexpr char const* kThen[] = {":", " and later:"};
        long live = FailingAllocator::LiveBlocks();
        for (bool const onward : {false, true}) {
            for (long const n : chosen) {
                bool const isTried = IsFull() || n % step == 0;
                if (onward && !isTried) {
                    continue;
                }
                Once(n, onward);
                if (isTried) {
                    ASSERT_TRUE(Once(0, false)) << "not usable after " << n << kThen[onward];
                }
                long const left = mayLeak ? live : LiveBlocks(live);
                ASSERT_LE(left, live) << "left over by " << n << kThen[onward];
                live =
                    isTried ? std::min(live, left) : live; // a thread may have been on its way out at first
            }
        }
    }
};

/// The shut-down of the library, whatever the attempt before it left: one that failed may have been counted.
void EndWhatIsLeft() {
    if (IsLibraryInitialized()) {
        UninitializeLibrary(true, false, true);
        InitializeLibrary(false);
        InitializeLibrary(false);
        UninitializeLibrary(true, false, true);
        if (IsLibraryInitialized()) {
            UninitializeLibrary(true, false, true);
        }
    }
}

TEST(AllocationSweep, StartOfTheLibrary) {
    Sweep{[] {
              InitializeLibrary(false);
              return true;
          },
          [] {}, [] { UninitializeLibrary(true, false, true); }, false, 7}
        .Run();
}

TEST(AllocationSweep, EndOfTheLibrary) {
    Sweep{[] {
              UninitializeLibrary(true, true, false);
              return true;
          },
          [] {
              InitializeLibrary(false);
              VString::NewString("pooled")->Release();
              VClass::ClassForClassName("VString");
              VClass::SetClassSubstitution("Old", VString::TheClass());
          },
          EndWhatIsLeft, false, 7}
        .Run();
}

TEST(AllocationSweep, FirstUseOfTheKernel) {
    Sweep{[] {
              VString::NewString("first")->Release();
              return VClass::ClassForClassName("VObject") != nullptr;
          },
          [] {},
          [] {
              VString::UninitializeClass();
              VClass::DestroyClassRegistry();
          }}
        .Run();
}

class AWithHook : public Registered<AWithHook, VDictionary> {
  public:
    static constexpr char const* kClassName = "AAWithHook";
    static inline VClass* ms_theClass = nullptr;
    AWithHook() : Registered(nullptr) {}
    static AWithHook* New() { return new AWithHook; }
    static void InitializeClass() { New()->Release(); }
};

/// Sweeps with the library running and its pools off, so that what is alive can be counted.
class AllocationSweepTest : public testing::Test {
  protected:
    void SetUp() override {
        InitializeLibrary(false);
        VLog::GetDefaultLog(); // else the first exception makes it
        SetPools(false);
    }
    void TearDown() override {
        SetPools(true);
        UninitializeLibrary(true, false, true);
    }
    static void SetPools(bool enabled) {
        VString::ms_bRecyclingEnabled = enabled;
        VObjectArray::SetRecyclingEnabled(enabled);
        VFileInfo::ms_bRecyclingEnabled = enabled;
        VConnectionTuple::ms_bRecyclingEnabled = enabled;
    }
    static VObjectRef<VDictionary> Filled() {
        auto dictionary = VObjectRef<VDictionary>::Adopt(VDictionary::New());
        VString key("key");
        dictionary->SetObjectForKey(VObjectRef<VString>::Adopt(VString::NewString("value")).Get(), &key);
        key = "colour";
        VColour colour;
        dictionary->SetObjectForKey(VObjectRef<VObject>::Adopt(colour.Copy()).Get(), &key);
        return dictionary;
    }
    bool Save(VDictionary& dictionary) const {
        VXMLFile file;
        bool const isOpen = file.OpenFileForWrite(m_scratch.Path(), "Root");
        return isOpen && file.SerializeObject("d", dictionary) && file.CloseFile();
    }
    ScratchFile const m_scratch;
};

TEST_F(AllocationSweepTest, FirstUseOfAClass) {
    Sweep{[] { return AWithHook::TheClass()->IsReady(); }, [] {}, [] { delete AWithHook::ms_theClass; }}
        .Run();
}

TEST_F(AllocationSweepTest, ExceptionsAndCans) {
    Sweep{[] {
        auto const can = VObjectRef<VGarbageCan>::Adopt(new VGarbageCan(8));
        VGarbageCan::Context const open(can.Get());
        bool const isParked = can->AddGarbageToCan(VObjectRef<ACounted>::Adopt(ACounted::New()).Get());
        VException exception(VException::eFileNotFound, can.Get(), "a text that is somewhat longer than most",
                             2);
        exception.AppendStackTrace("AllocationSweep", 3);
        VException const copy(exception);
        VString text;
        copy.GetDescription(text);
        return isParked && !text.IsEmpty();
    }}.Run();
}

TEST_F(AllocationSweepTest, Copies) {
    auto const original = Filled();
    VGraph graph;
    for (int i = 0; i < 3; ++i) {
        graph.AddNode(VObjectRef<VGraphNode>::Adopt(VGraphNode::New()).Get());
    }
    auto const edge = VObjectRef<VGraphEdge>::Adopt(VGraphEdge::New());
    edge->SetNodes(graph.Nodes().ObjectAtIndexTyped(0), graph.Nodes().ObjectAtIndexTyped(1));
    graph.AddEdge(edge.Get());
    Sweep{[&] {
        auto const copy = VObjectRef<VDictionary>::Adopt(original->Copy());
        auto const graphCopy = VObjectRef<VGraph>::Adopt(graph.CopyGraph());
        return copy->Count() == 2 && graphCopy && graphCopy->EdgeCount() == 1;
    }}.Run();
}

TEST_F(AllocationSweepTest, XMLSaved) {
    auto const dictionary = Filled();
    Sweep{[&] { return Save(*dictionary); }}.Run();
}

TEST_F(AllocationSweepTest, XMLLoaded) {
    ASSERT_TRUE(Save(*Filled()));
    auto const load = [&] {
        VXMLFile file;
        VDictionary read;
        return file.OpenFileForRead(m_scratch.Path(), "Root") && file.SerializeObject("d", read) &&
               read.Count() == 2;
    };
    // TinyXML forgets the node that it is parsing when an allocation throws.
    Sweep{load, [] {}, [] {}, true}.Run();
#ifdef VFOUNDATION_WITH_PUGIXML
    // What pugixml allocates fails and is counted, too.
    pugi::set_memory_management_functions([](std::size_t size) { return std::malloc(size); },
                                          [](void* block) { std::free(block); });
    VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOPugiXmlFactory);
    Sweep{load}.Run();
    ASSERT_TRUE(Save(*Filled()));
    auto const dictionary = Filled();
    Sweep{[&] { return Save(*dictionary); }}.Run();
#endif
}

TEST_F(AllocationSweepTest, Archives) {
    auto const serialize = [this](VArchive& archive, long mode) {
        VAIFile file;
        bool const isOpen = file.Open(m_scratch.Path(), mode);
        return isOpen && archive.Serialize(file) && file.Close();
    };
    Sweep{[&] {
        VArchive archive;
        auto const info = VObjectRef<VFileInfo>::Adopt(VFileInfo::NewFileInfo());
        info->SetPath("/a/path");
        auto const data = VObjectRef<VData>::Adopt(new VData(2000));
        archive.Infos().AddObject(info.Get());
        archive.Data().AddObject(data.Get());
        VArchive read;
        return serialize(archive, VAIFile::kWrite) && serialize(read, VAIFile::kRead | VAIFile::kChunkSafe) &&
               read.Infos().Count() == 1 && read.Data().Count() == 1;
    }}.Run();
}

TEST_F(AllocationSweepTest, Messages) {
    auto const target = NewMessenger([](VMessage*) {});
    auto const center = NewCenter(4);
    Sweep{[&] {
              VMessage message;
              message.SetMessageID(1);
              return center->ConnectDelayed(target.Get(), 0, center.Get(), target.Get(), 1) &&
                     center->MessageDelay(target.Get(), &message) && center->SendDelayedCommands() == 2;
          },
          [] {},
          [&] {
              center->SendDelayedCommands();
              center->DisconnectImmediate(target.Get(), 0, center.Get(), target.Get(), 1);
          }}
        .Run();
    EXPECT_EQ(center->CommandCountMin(), 0);
}

TEST_F(AllocationSweepTest, JobServers) {
    std::string const name = UniqueName();
    VObjectRef<VJobServer> server;
    std::atomic<bool> hasRun{false};
    Sweep{[&] {
              server = VObjectRef<VJobServer>::Adopt(new VJobServer(name.c_str(), 4));
              auto const job = VObjectRef<AJob>::Adopt(new AJob([&] { return hasRun = true; }));
              return server->StartServer() && server->AddJob(job.Get());
          },
          [] {},
          [&] {
              if (server) {
                  server->EndServer(true);
              }
              server = VObjectRef<VJobServer>();
          }}
        .Run();
    sem_unlink(name.c_str());
}

TEST_F(AllocationSweepTest, LogWriters) {
    VObjectRef<VLogFile> log;
    Sweep{[&] {
              log = VObjectRef<VLogFile>::Adopt(new VLogFile(nullptr));
              bool const isStarted = log->Open(m_scratch.Path()) && log->StartLoggingThread();
              log->AddString("line\n");
              return isStarted;
          },
          [] {}, [&] { log = VObjectRef<VLogFile>(); }}
        .Run();
}

TEST_F(AllocationSweepTest, Pictures) {
    VImage::DefaultImageResourcePath(); // else the first failure makes it
    std::string bytes(18 + 300 * 4 + 26, '\0');
    bytes[12] = bytes[14] = 10;
    bytes[16] = 32;
    m_scratch.SetBytes(bytes.replace(bytes.size() - 18, 16, "TRUEVISION-XFILE"));
    std::string const errors = Sweep{[&] {
                                   return static_cast<bool>(VObjectRef<VImage>::Adopt(
                                       VImageIOTarga().LoadImageFromFile(m_scratch.Path())));
                               }}.Run();
    EXPECT_NE(errors.find("Caught out of memory exception whilst loading image\nFailed to load"),
              errors.npos);
    EXPECT_NE(errors.find("Caught and unknown exception whilst loading image\nFailed to load"), errors.npos);
}

TEST_F(AllocationSweepTest, Strings) {
    VAIFile file;
    ASSERT_TRUE(file.Open(m_scratch.Path(), VAIFile::kWrite));
    ASSERT_TRUE(VString(std::string(1000, 'x').c_str()).Serialize(file));
    ASSERT_TRUE(file.Open(m_scratch.Path(), VAIFile::kRead));
    bool isSound = true;
    Sweep{[&] {
        VString text("short");
        for (int i = 0; i < 100; ++i) {
            text << "0123456789" << i;
        }
        text.AppendPathComponent("component");
        text.AppendPathComponent(text.CString() + (text.Length() ? 1 : 0)); // no buffer: nothing after its ""
        text.Set("a longer text than before, to be cut", 300);
        VString copy(text);
        copy.Format("%0500i", 7);
        copy << copy.CString() << copy;
        auto const made = VObjectRef<VString>::Adopt(VString::NewString(copy.CString()));
        made->DeleteLastPathComponent();
        VString read;
        file.Seek(0, VFile::kFromStart);
        bool const isRead = read.Serialize(file);
        isSound =
            isSound && made->GetCharAtIndex(made->Length()) == '\0' && isRead == (read.Length() == 1000);
        return isRead;
    }}.Run();
    EXPECT_TRUE(isSound);
}

TEST_F(AllocationSweepTest, AStringGrowsWithoutRoomForMoreWhenMemoryIsShort) {
    VString text(std::string(1000, 'x').c_str());
    std::string const more(100, 'y');
    FailingAllocator::FailAt(1, false);
    text.Append(more.c_str());
    FailingAllocator::FailAt(0, false);
    EXPECT_EQ(text.Length(), 1100U);
}

/// Copies are whole, and a change that finds no memory leaves the object as it was.
template <class Value>
void SweepChange(Value const& before, std::function<void(Value&)> const& change) {
    bool isWhole = true;
    auto const after = VObjectRef<Value>::Adopt(static_cast<Value*>(before.Copy()));
    change(*after);
    Sweep{[&] {
        auto const value = VObjectRef<Value>::Adopt(static_cast<Value*>(before.Copy()));
        auto const compare = [&](VObject const& expected) {
            FailingAllocator::FailAt(0, false); // comparing takes memory too
            isWhole = isWhole && value->IsEqual(expected);
        };
        try {
            change(*value);
        } catch (...) {
            compare(before);
            throw;
        }
        compare(*after);
        return true;
    }}.Run();
    EXPECT_TRUE(isWhole) << before.ClassName();
}

TEST_F(AllocationSweepTest, ValuesAreWholeOrAsTheyWere) {
    SweepChange<VData>(VData(16), [](auto& data) {
        data.SetLength(1000, true);
        VData::FastZeroMemory(data.Bytes(), 1000);
    });
    SweepChange<VColour>(VColour(9, 9, 9, 9, nullptr), [](auto& to) { to = VColour(1, 2, 3, 4, "mine"); });
    VAIFile file;
    ASSERT_TRUE(file.Open(m_scratch.Path(), VAIFile::kWrite));
    ASSERT_TRUE(VBitString(1000).Serialize(file));
    ASSERT_TRUE(file.Open(m_scratch.Path(), VAIFile::kRead));
    SweepChange<VBitString>(VBitString(5), [&](auto& bits) {
        file.Seek(0, VFile::kFromStart);
        bits.Serialize(file);
    });
    VFloatVectorMapXY curve;
    VFloatVectorMapXY large;
    for (int i = 0; i < 100; ++i) {
        auto const x = static_cast<float>(i);
        large.AddPoint(x, 0);
        if (i < 4) {
            curve.AddPoint(x, x);
        }
    }
    SweepChange<VFloatVectorMapXY>(curve, [](auto& points) { points.AddPoint(-1, 2); });
    SweepChange<VFloatVectorMapXY>(curve, [&](auto& points) { points = large; });
    SweepChange<VFloatVectorMapXY>(curve, [&](auto& points) { points.SetPoints(large.X(), large.Y()); });
}

TEST_F(AllocationSweepTest, Arrays) {
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    bool isCounted = true;
    Sweep{[&] {
        auto const array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
        VPtrArray pointers(false);
        long added = 0;
        long addedPointers = 0;
        for (int i = 0; i < 200; ++i) {
            added += array->AddObject(object.Get()) ? 1 : 0;
            addedPointers += pointers.AddPtr(object.Get()) ? 1 : 0;
        }
        added += array->InsertObjectAtIndex(object.Get(), 0) ? 1 : 0;
        isCounted = isCounted && array->Count() == added && pointers.Count() == addedPointers;
        auto const copy = VObjectRef<VObject>::Adopt(array->Copy());
        auto const deep = VObjectRef<VObject>::Adopt(array->DeepCopy());
        auto const ring = VObjectRef<VObject>::Adopt(new VObjectRingBufferTmpl<VString>(64));
        return added == 201 && addedPointers == 200;
    }}.Run();
    EXPECT_TRUE(isCounted);
    EXPECT_EQ(object->RetainCount(), 1);
    EXPECT_EQ(ACounted::ms_alive, 1);
}

} // namespace
