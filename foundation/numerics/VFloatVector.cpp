#include "foundation/numerics/VFloatVector.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/internal/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <limits>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

namespace VFoundation {

namespace {

/// Folds all elements into one value. Several lanes, so that the compiler may vectorise the loop.
template <class Value, class Step>
Value Fold(VFloatVector const& vector, Value start, Step step) noexcept {
    constexpr long kLanes = 8;
    std::array<Value, kLanes> lanes;
    lanes.fill(start);
    float const* const elements = vector.Elements();
    long const count = vector.Count();
    long i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (long lane = 0; lane < kLanes; ++lane) {
            lanes[static_cast<std::size_t>(lane)] =
                step(lanes[static_cast<std::size_t>(lane)], Value{elements[i + lane]});
        }
    }
    for (; i < count; ++i) {
        lanes[0] = step(lanes[0], Value{elements[i]});
    }
    return std::accumulate(lanes.begin() + 1, lanes.end(), lanes[0], step);
}

/// Appends each number in its shortest form that reads back the same, with blanks between.
std::string TextOf(VFloatVector const& vector) {
    std::string text;
    for (long i = 0; i < vector.Count(); ++i) {
        char number[32];
        auto const end = std::to_chars(number, number + sizeof number, vector.Elements()[i]).ptr;
        text.append(i > 0 ? 1 : 0, ' ').append(number, end);
    }
    return text;
}

/// Appends the numbers. False when the text is anything but numbers with blanks between. A null follows the text.
bool AppendNumbers(std::string_view text, VFloatVector& numbers) {
    constexpr char kBlanks[] = " \t\r\n";
    char const* const end = text.data() + text.size();
    for (std::size_t at = text.find_first_not_of(kBlanks); at != text.npos;) {
        float number = 0;
        auto const [rest, error] = FloatFromChars(text.data() + at, end, number);
        std::size_t const next =
            text.find_first_not_of(kBlanks, static_cast<std::size_t>(rest - text.data()));
        if (error != std::errc() || (next != text.npos && text.data() + next == rest)) {
            return false;
        }
        numbers.SetCount(numbers.Count() + 1);
        numbers.Elements()[numbers.Count() - 1] = number;
        at = next;
    }
    return true;
}

/// The bytes that a chunked file can still give.
unsigned long BytesLeft(IAIFile& file) {
    unsigned long const inFile = file.GetFileRemaining();
    return file.IsChunkSafe() ? std::min(inFile, file.ChunkRemaining()) : inFile;
}

} // namespace

VClass* VFloatVector::ms_theClass = nullptr;

VFloatVector::VFloatVector(VClass* cls, long count) : Registered(cls) {
    SetCount(count);
}

VFloatVector::VFloatVector(VFloatVector const& other) : Registered(nullptr), m_data(other.m_data) {
}

VFloatVector& VFloatVector::operator=(VFloatVector const& other) {
    m_data = other.m_data;
    return *this;
}

VFloatVector::VFloatVector(VFloatVector&& other) noexcept
    : Registered(LoadClassSlot(ms_theClass)), m_data(std::move(other.m_data)) {
}

VFloatVector& VFloatVector::operator=(VFloatVector&& other) noexcept {
    m_data = std::move(other.m_data);
    return *this;
}

VFloatVector::~VFloatVector() = default;

VFloatVector* VFloatVector::New() {
    return new VFloatVector;
}

VFloatVector* VFloatVector::Copy() const {
    return new VFloatVector(*this);
}

bool VFloatVector::IsEqual(VObject const& other) const {
    return other.Class() == Class() && static_cast<VFloatVector const&>(other).m_data == m_data;
}

void VFloatVector::GetDescription(VString& out) const {
    out.Format("[%s] Count: %li", ClassName(), Count());
}

// Elements

void VFloatVector::SetCount(long count) {
    long const old = Count();
    count = std::max(count, 0L);
    // A count that does not fit is left to the buffer to refuse.
    m_data.SetLength(
        count > kMaxCount ? VData::kMaxLength + 1 : static_cast<unsigned long>(count) * sizeof(float), true);
    if (count > old) {
        std::fill(Elements() + old, Elements() + count, 0.0F);
    }
}

bool VFloatVector::SetElementAtIndex(float value, long index) noexcept {
    if (!Contains(index)) {
        return false;
    }
    Elements()[index] = value;
    return true;
}

void VFloatVector::Fill(float value) noexcept {
    std::fill_n(Elements(), Count(), value);
}

bool VFloatVector::Add(VFloatVector const& other) noexcept {
    if (other.Count() != Count()) {
        return false;
    }
    std::transform(Elements(), Elements() + Count(), other.Elements(), Elements(), std::plus<>());
    return true;
}

bool VFloatVector::Multiply(VFloatVector const& other) noexcept {
    if (other.Count() != Count()) {
        return false;
    }
    std::transform(Elements(), Elements() + Count(), other.Elements(), Elements(), std::multiplies<>());
    return true;
}

void VFloatVector::Scale(float factor) noexcept {
    std::for_each(Elements(), Elements() + Count(), [factor](float& element) { element *= factor; });
}

double VFloatVector::Sum() const noexcept {
    return Fold(*this, 0.0, [](double sum, double element) { return sum + element; });
}

float VFloatVector::Minimum() const noexcept {
    return Fold(*this, std::numeric_limits<float>::infinity(),
                [](float least, float element) { return element < least ? element : least; });
}

float VFloatVector::Maximum() const noexcept {
    return Fold(*this, -std::numeric_limits<float>::infinity(),
                [](float greatest, float element) { return element > greatest ? element : greatest; });
}

// Persistence

bool VFloatVector::Serialize(IAIFile& file) {
    if (file.IsLoading()) {
        return Load(file);
    }
    file << narrow_cast<int>(Count());
    for (long i = 0; i < Count(); ++i) {
        file << Elements()[i];
    }
    return !file.HasLostBytes();
}

bool VFloatVector::Load(IAIFile& file) {
    int count = 0;
    file >> count;
    bool const isThere = count >= 0 && static_cast<unsigned long>(count) <= BytesLeft(file) / sizeof(float);
    SetCount(isThere ? count : 0);
    for (long i = 0; i < Count(); ++i) {
        file >> Elements()[i];
    }
    return isThere;
}

bool VFloatVector::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    if (file.IsLoading()) {
        return Load(file);
    }
    bool const hasCount = file.WriteAttribute("count", Count());
    if (Count() == 0 || !file.OpenFirstChildText()) {
        return hasCount && Count() == 0;
    }
    bool const hasText = file.WriteText(TextOf(*this).c_str());
    return file.CloseChild() && hasText && hasCount;
}

bool VFloatVector::Load(VXMLFile& file) {
    long expected = -1;
    file.ReadAttribute("count", expected);
    VFloatVector numbers;
    bool isText = true;
    if (file.OpenFirstChildText()) {
        char const* text = nullptr;
        isText = file.ReadText(text) && AppendNumbers(text, numbers);
        file.CloseChild();
    }
    bool const isWhole = isText && numbers.Count() == expected;
    numbers.SetCount(isWhole ? expected : 0);
    Swap(numbers);
    return isWhole;
}

} // namespace VFoundation
