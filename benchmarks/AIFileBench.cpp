// Four million 32-bit values in one chunk of a file, in both byte orders, through the stream operators of the
// interface, and through its operations for many values. Beside it one stdio call for each value, one for all of them, and the copying alone. Then 200 000 chunks of
// one value each. stdio has a buffer of the same size, and stores the lengths of its chunks in the same way: a flush
// before each body, the length when it is known.

#include "foundation/persistence/VAIFile.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace VFoundation;

constexpr std::uint32_t kValues = 4U << 20;
constexpr long kSafe = VAIFile::kChunkSafe;
constexpr long kLE = VAIFile::kLittleEndian;

/// A file that goes with the program.
class BenchFile {
  public:
    BenchFile() : m_path((std::filesystem::temp_directory_path() / "vfoundation-bench.bin").string()) {}
    ~BenchFile() { std::filesystem::remove(m_path); }
    char const* Path() const { return m_path.c_str(); }
    /// Some file systems sync a file that is written over.
    void Remove() const { std::filesystem::remove(m_path); }

  private:
    std::string m_path;
};

BenchFile const& File() {
    static BenchFile const file;
    return file;
}

constexpr int kSmallChunks = 200000;

/// stdio with a buffer as large as ours.
std::FILE* OpenStdio(char const* mode) {
    static char buffer[BlockFile::kBlockSize];
    std::FILE* const file = std::fopen(File().Path(), mode);
    std::setvbuf(file, buffer, _IOFBF, sizeof buffer);
    return file;
}

void WriteChunk(long flags) {
    VAIFile file;
    File().Remove();
    file.Open(File().Path(), VAIFile::kWrite | flags);
    file.OpenChunk("DATA");
    IAIFile& asInterface = file;
    for (std::uint32_t i = 0; i < kValues; ++i) {
        asInterface << i;
    }
    file.CloseChunk();
    file.Close();
}

void ChunkedWrite(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        WriteChunk(state.range(0));
    }
}

void ChunkedRead(benchmark::State& state) {
    long const flags = state.range(0);
    WriteChunk(flags & VAIFile::kLittleEndian);
    for ([[maybe_unused]] auto _ : state) {
        VAIFile file;
        file.Open(File().Path(), VAIFile::kRead | flags);
        file.ReadChunkHeader(nullptr, nullptr);
        IAIFile& asInterface = file;
        std::uint32_t sum = 0;
        for (std::uint32_t i = 0; i < kValues; ++i) {
            std::uint32_t value = 0;
            asInterface >> value;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void ChunkedWriteValues(benchmark::State& state) {
    std::vector<std::uint32_t> const values(kValues, 7);
    for ([[maybe_unused]] auto _ : state) {
        VAIFile file;
        File().Remove();
        file.Open(File().Path(), VAIFile::kWrite);
        file.OpenChunk("DATA");
        file.WriteValues(values.data(), kValues);
        file.CloseChunk();
        file.Close();
    }
}

void ChunkedReadValues(benchmark::State& state) {
    WriteChunk(0);
    std::vector<std::uint32_t> values(kValues);
    for ([[maybe_unused]] auto _ : state) {
        VAIFile file;
        file.Open(File().Path(), VAIFile::kRead | kSafe);
        file.ReadChunkHeader(nullptr, nullptr);
        file.ReadValues(values.data(), kValues);
        benchmark::DoNotOptimize(values[7]);
    }
}

void StdioWriteEach(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        File().Remove();
        std::FILE* const file = OpenStdio("wb");
        for (std::uint32_t i = 0; i < kValues; ++i) {
            std::uint32_t const swapped = __builtin_bswap32(i);
            std::fwrite(&swapped, sizeof swapped, 1, file);
        }
        std::fclose(file);
    }
}

void StdioReadEach(benchmark::State& state) {
    WriteChunk(0);
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = OpenStdio("rb");
        std::uint32_t sum = 0;
        for (std::uint32_t value = 0; std::fread(&value, sizeof value, 1, file) == 1;) {
            sum += __builtin_bswap32(value);
        }
        benchmark::DoNotOptimize(sum);
        std::fclose(file);
    }
}

void StdioWriteAll(benchmark::State& state) {
    std::vector<std::uint32_t> const values(kValues, 7);
    for ([[maybe_unused]] auto _ : state) {
        File().Remove();
        std::FILE* const file = OpenStdio("wb");
        std::fwrite(values.data(), sizeof values[0], kValues, file);
        std::fclose(file);
    }
}

void StdioReadAll(benchmark::State& state) {
    WriteChunk(0);
    std::vector<std::uint32_t> values(kValues);
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = OpenStdio("rb");
        benchmark::DoNotOptimize(std::fread(values.data(), sizeof values[0], kValues, file));
        std::fclose(file);
    }
}

void Memcpy(benchmark::State& state) {
    std::vector<std::uint32_t> const from(kValues, 7);
    std::vector<std::uint32_t> to(kValues);
    for ([[maybe_unused]] auto _ : state) {
        std::memcpy(to.data(), from.data(), kValues * sizeof from[0]);
        benchmark::ClobberMemory();
    }
}

void WriteSmallChunks() {
    VAIFile file;
    File().Remove();
    file.Open(File().Path(), VAIFile::kWrite);
    for (int i = 0; i < kSmallChunks; ++i) {
        file.OpenChunk("DATA");
        file << i;
        file.CloseChunk();
    }
    file.Close();
}

void SmallChunksWrite(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        WriteSmallChunks();
    }
}

void SmallChunksRead(benchmark::State& state) {
    WriteSmallChunks();
    for ([[maybe_unused]] auto _ : state) {
        VAIFile file;
        file.Open(File().Path(), kSafe | VAIFile::kRead);
        int sum = 0;
        for (int value = 0; file.ReadChunkHeader(nullptr, nullptr); file.CloseChunk()) {
            file >> value;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
}

void StdioSmallChunksWrite(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        File().Remove();
        std::FILE* const file = OpenStdio("wb");
        for (std::uint32_t i = 0; i < kSmallChunks; ++i) {
            std::uint32_t const swapped = __builtin_bswap32(i);
            std::uint32_t length = 0;
            std::fwrite("DATA", 4, 1, file);
            std::fwrite(&length, sizeof length, 1, file);
            std::fflush(file);
            long const start = std::ftell(file);
            std::fwrite(&swapped, sizeof swapped, 1, file);
            long const end = std::ftell(file);
            length = __builtin_bswap32(static_cast<std::uint32_t>(end - start));
            std::fseek(file, start - 4, SEEK_SET);
            std::fwrite(&length, sizeof length, 1, file);
            std::fseek(file, end, SEEK_SET);
        }
        std::fclose(file);
    }
}

void StdioSmallChunksRead(benchmark::State& state) {
    WriteSmallChunks();
    for ([[maybe_unused]] auto _ : state) {
        std::FILE* const file = OpenStdio("rb");
        std::uint32_t sum = 0;
        for (std::uint32_t chunk[3]; std::fread(chunk, sizeof chunk, 1, file) == 1;) {
            sum += __builtin_bswap32(chunk[2]);
        }
        benchmark::DoNotOptimize(sum);
        std::fclose(file);
    }
}

BENCHMARK(ChunkedWrite)->ArgName("flags")->Arg(0)->Arg(kLE)->Unit(benchmark::kMillisecond);
BENCHMARK(ChunkedWriteValues)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioWriteEach)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioWriteAll)->Unit(benchmark::kMillisecond);
BENCHMARK(ChunkedRead)
    ->ArgName("flags")
    ->Arg(0)
    ->Arg(kLE)
    ->Arg(kSafe)
    ->Arg(kSafe | kLE)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ChunkedReadValues)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioReadEach)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioReadAll)->Unit(benchmark::kMillisecond);
BENCHMARK(Memcpy)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallChunksWrite)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioSmallChunksWrite)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallChunksRead)->Unit(benchmark::kMillisecond);
BENCHMARK(StdioSmallChunksRead)->Unit(benchmark::kMillisecond);

} // namespace
