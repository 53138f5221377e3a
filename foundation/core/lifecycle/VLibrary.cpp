#include "foundation/core/lifecycle/VLibrary.h"

#include "foundation/containers/TRingBuffer.h"
#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VDictionaryPair.h"
#include "foundation/containers/VHashTable.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectContainer.h"
#include "foundation/containers/VObjectQueue.h"
#include "foundation/containers/VObjectStack.h"
#include "foundation/containers/VObjectUndoStack.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/containers/VSet.h"
#include "foundation/containers/VTree.h"
#include "foundation/core/VClass.h"
#include "foundation/core/VException.h"
#include "foundation/core/VGarbageCan.h"
#include "foundation/core/VMemoryProfiler.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/core/internal/ClassStart.h"
#include "foundation/graph/VGraph.h"
#include "foundation/graph/VGraphEdge.h"
#include "foundation/graph/VGraphNode.h"
#include "foundation/host/VDiskInfo.h"
#include "foundation/host/VFile.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/host/VFileManager.h"
#include "foundation/host/VHostArchitecture.h"
#include "foundation/image/VImage.h"
#include "foundation/log/VLog.h"
#include "foundation/log/VLogContext.h"
#include "foundation/log/VLogFile.h"
#include "foundation/log/VStopWatch.h"
#include "foundation/messaging/VCmdEvent.h"
#include "foundation/messaging/VCommandDelayer.h"
#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/messaging/VMessage.h"
#include "foundation/messaging/VMessageCenter.h"
#include "foundation/messaging/VNotification.h"
#include "foundation/messaging/VNotificationCenter.h"
#include "foundation/messaging/VNotificationTuple.h"
#include "foundation/numerics/VFloatVector.h"
#include "foundation/numerics/VFloatVectorMapXY.h"
#include "foundation/numerics/VWindowFunction.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VArchive.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/VStringTokenizer.h"
#include "foundation/strings/values/VBitString.h"
#include "foundation/strings/values/VColour.h"
#include "foundation/strings/values/VDate.h"
#include "foundation/strings/values/VDev.h"
#include "foundation/strings/values/VPDFConnection.h"
#include "foundation/strings/values/VPoint.h"
#include "foundation/strings/values/VRange.h"
#include "foundation/strings/values/VRect.h"
#include "foundation/strings/values/VSize.h"
#include "foundation/strings/values/VTimeRange.h"
#include "foundation/strings/values/VURL.h"
#include "foundation/strings/values/VValue.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/VJobPoolTicket.h"
#include "foundation/threads/VJobServer.h"
#include "foundation/threads/VJobServerPool.h"
#include "foundation/threads/VLock.h"
#include "foundation/threads/VMutex.h"
#include "foundation/threads/VSemaphore.h"
#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/ThreadPresence.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <utility>

namespace VFoundation {

namespace {

std::atomic<std::int32_t> ms_iInitCount{0};
std::atomic<bool> ms_bInit{false};
bool s_bWasShutDown = false;

using ClassAccessor = VClass* (*)();

/// The order of registration, which the statistics table shows. Superclasses register with their subclasses; a
/// class that is listed twice is found the second time.
constexpr ClassAccessor kClasses[] = {
    &VClass::TheClass,
    &VObject::TheClass,
    &VString::TheClass,
    &VFile::TheClass,
    &VAIFile::TheClass,
    &VArchive::TheClass,
    &VBitString::TheClass,
    &VCmdEvent::TheClass,
    &VColour::TheClass,
    &VCriticalSection::TheClass,
    &VData::TheClass,
    &VDate::TheClass,
    &VDev::TheClass,
    &VDictionaryPair::TheClass,
    &VDictionary::TheClass,
    &VDiskInfo::TheClass,
    &VDictionary::TheClass,
    &VFileInfo::TheClass,
    &VFileManager::TheClass,
    &VFloatVector::TheClass,
    &VFloatVectorMapXY::TheClass,
    &VGraph::TheClass,
    &VGraphEdge::TheClass,
    &VGraphNode::TheClass,
    &VHashTable::TheClass,
    &VImage::TheClass,
    &VJob::TheClass,
    &VJobServer::TheClass,
    &VJobServerPool::TheClass,
    &VJobPoolTicket::TheClass,
    &VLock::TheClass,
    &VLog::TheClass,
    &VLog::VLogContext::TheClass,
    &VLogFile::TheClass,
    &VMemoryProfiler::TheClass,
    &VMutex::TheClass,
    &VNotification::TheClass,
    &VNotificationCenter::TheClass,
    &VNotificationTuple::TheClass,
    &VObjectArray::TheClass,
    &VObjectContainer::TheClass,
    &VObjectQueue::TheClass,
    &TRingBuffer<VObject, TRefCounted<VObject>>::TheClass,
    &VObjectStack::TheClass,
    &VObject::TheClass,
    &VObjectUndoStack::TheClass,
    &VPoint::TheClass,
    &VPtrArray::TheClass,
    &VRange::TheClass,
    &VRect::TheClass,
    &VSemaphore::TheClass,
    &VSize::TheClass,
    &VStopWatch::TheClass,
    &VObject::TheClass,
    &VStringTokenizer::TheClass,
    &VThread::TheClass,
    &VTimeRange::TheClass,
    &VTree::TheClass,
    &VURL::TheClass,
    &VValue::TheClass,
    &VWindowFunction::TheClass,
    &VPDFConnection::TheClass,
    &VConnectionTuple::TheClass,
    &VCommandDelayer::TheClass,
    &VMessageCenter::TheClass,
    &VException::TheClass,
    &VSet::TheClass,
    &VGarbageCan::TheClass,
};

/// False when the class has no record. A record kept over a shut-down has its class set up again.
bool RegisterClass(ClassAccessor theClass) {
    VClass* const cls = theClass();
    if (cls) {
        ClassStart::RunAgain(*cls);
    }
    return cls != nullptr;
}

/// How far a shut-down has got; the number is part of the message of an unexpected exception.
enum Stage : int {
    eStopping = 0,
    eEmptyingPools = 2,
    eEndingLog = 3,
    eEndingRecords = 8,
    eEndingBackEnd = 10
};

class ShutDown {
  public:
    ShutDown(bool destroyRegistry, bool dumpClasses, bool quiet)
        : m_destroyRegistry(destroyRegistry), m_dumpClasses(dumpClasses),
          m_quiet(quiet || !VLog::GetShowRoutineLines()) {}

    void Run();
    int CurrentStage() const noexcept { return m_stage; }

  private:
    void StopUsers();
    void EmptyPools();
    void EndLog();
    void EndRegistry();

    bool m_destroyRegistry;
    bool m_dumpClasses;
    bool m_quiet;
    Stage m_stage = eStopping;
    ThreadPresence::LibraryEnd m_threads;
};

void ShutDown::Run() {
    if (!m_quiet) {
        VLog::StartLoggingContext("VFoundation::UninitializeLibrary");
    }
    if (--ms_iInitCount > 0) {
        return;
    }
    m_threads.Await(); // while their last lines still reach the log
    StopUsers();
    m_stage = eEmptyingPools;
    EmptyPools();
    m_stage = eEndingLog;
    EndLog();
    if (m_destroyRegistry) {
        EndRegistry();
    }
    ClassRegistry::MarkAllForInitialization();
    s_bWasShutDown = true;
    ms_bInit = false;
    m_stage = eEndingBackEnd;
    VXMLFile::ClearIXMLFileIOFactory();
    VLog::SetLog(nullptr);
}

/// The default log's writer thread, if it has one. The log must be a `VLogFile` and nothing derived from it.
void StopLoggingThread(bool onlyIfRunning) {
    VLog* const log = VLog::GetDefaultLog();
    if (!log || !log->IsMemberOfClass(LoadClassSlot(VLogFile::ms_theClass))) {
        return;
    }
    auto* const file = static_cast<VLogFile*>(log);
    if (!onlyIfRunning || file->IsLoggingThreadRunning()) {
        bool const stopped = file->ShutdownLoggingThread();
        if (!stopped || VLog::GetShowRoutineLines()) {
            VLog::Trace("VLogging thread shutdown: %s\n", stopped ? "SUCCESSFUL" : "FAILED");
        }
    }
}

void ShutDown::StopUsers() {
    StopLoggingThread(false);
    m_threads.Await();
    VObjectArray::SetRecyclingEnabled(false);
    VString::ms_bRecyclingEnabled = false;
    VFileInfo::UninitializeClass();
    VPoint::UninitializeClass();
    VRect::UninitializeClass();
    VColour::ReleaseAllStaticColours();
    VDiskInfo::UninitializeClass();
    VDictionary::UninitializeClass();
}

void ShutDown::EmptyPools() {
    VStopWatch::UninitializeClass();
    VFileManager::DeleteDefaultManager();
    VLog::TraceRoutine("String recycle pool: %li\n", VString::GetRecycledStringsCount());
    VLog::TraceRoutine("Killing recycled strings...\n");
    VString::ReleaseAllRecycledStrings();
    VLog::TraceRoutine("String recycle pool: %li\n", VString::GetRecycledStringsCount());

    VNotificationCenter::UninitializeClass();
    VImage::UninitializeClass();
    VConnectionTuple::UninitializeClass();
    VMessage::UninitializeClass();
    VThread::UninitializeClass();
    VString::UninitializeClass();
    VObjectArray::ReleaseRecycledArrays();

    if (m_dumpClasses) {
        VClass::DumpClassDetails(true, false);
    }
    if (!m_quiet) {
        VLog::EndLoggingContext();
    }
    if (VMemoryProfiler* const profiler = VMemoryProfiler::DefaultProfiler()) {
        profiler->DestroyMemoryUseMap();
    }
    if (VExceptionManager::ExceptionHasOccured()) {
        VLog::Trace("EXCEPTION OCCURRED!\n");
    }
    VException::UninitializeClass();
    StopLoggingThread(true);
}

void ShutDown::EndLog() {
    VLog::DestroyDefaultLog();
    m_threads.Await();
    VLog::SetSafeShutdown();
}

void ShutDown::EndRegistry() {
    VString::UninitializeClass();
    VClass::DestroyClassRegistry();
    if (!m_quiet) {
        VLog::TraceRoutine("class registry destroyed\n");
    }
    m_stage = eEndingRecords;
    VMemoryProfiler::UninitializeClass();
    VObject::UninitializeVObject();
    // These had instances when the registry went: its own list and lock, and the profiler.
    ClassRegistry::Retire(LoadClassSlot(VMemoryProfiler::ms_theClass));
    ClassRegistry::Retire(LoadClassSlot(VPtrArray::ms_theClass));
    ClassRegistry::Retire(LoadClassSlot(VData::ms_theClass));
    ClassRegistry::Retire(LoadClassSlot(VCriticalSection::ms_theClass));
}

} // namespace

bool IsLibraryInitialized() noexcept {
    return ms_bInit;
}

void InitializeLibrary(bool) {
    ++ms_iInitCount;
    if (ms_bInit) {
        return;
    }
    VObject::InitializeVObject();
    VLog::SetSafeStartup();
    VStopWatch::InitializeClass();
    VHostArchitecture::VCPUInfo::InitializeClass();
    if (s_bWasShutDown) {
        VObjectArray::SetRecyclingEnabled(true);
        VString::ms_bRecyclingEnabled = true;
        VConnectionTuple::ms_bRecyclingEnabled = true;
    }

    long failures = 0;
    for (ClassAccessor const theClass : kClasses) {
        failures += RegisterClass(theClass) ? 0 : 1;
        if (theClass == &VDictionary::TheClass) {
            VDictionary::TheClass()->SetVersion(VDictionary::kVersion);
        }
    }
    VColour::InitAllNamedColours();
    VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
    failures += RegisterClass(&VXMLFile::TheClass) ? 0 : 1;
    VDiskInfo::InitializeVolumeInformation();
    ClassRegistry::InitializeMarked(); // the classes of the library's users
    if (failures > 0) {
        VLog::Trace("%i classes failed to initialize.\n", narrow_cast<int>(failures));
    }
    ms_bInit = true;
}

void UninitializeLibrary(bool destroyRegistry, bool dumpClasses, bool quiet) {
    ShutDown shutDown(destroyRegistry, dumpClasses, quiet);
    try {
        shutDown.Run();
    } catch (VException const& exception) {
        throw VException(exception);
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        char text[256];
        VString::snprintf(text, sizeof text, "Unknown exception in %s, stage:%i", "UninitializeLibrary",
                          shutDown.CurrentStage());
        throw VException(VException::eUnrecognized, nullptr, text, -1);
    }
}

LibraryScope::LibraryScope() {
    try {
        InitializeLibrary(false);
    } catch (...) {
        WithoutThrowing([] { UninitializeLibrary(true, false, true); });
        throw;
    }
}

// NOLINTNEXTLINE(bugprone-exception-escape): what is passed on is the end of the thread alone
LibraryScope::~LibraryScope() {
    WithoutThrowing([this] { End(); });
}

void LibraryScope::End(bool dumpClasses) {
    if (std::exchange(m_isRunning, false)) {
        UninitializeLibrary(true, dumpClasses, true);
    }
}

} // namespace VFoundation
