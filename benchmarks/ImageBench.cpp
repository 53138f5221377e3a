// Pictures of 4096 x 4096 pixels: Targa against stb_image, stb_image_write and copying or writing the pixels, JPEG and
// PNG against their libraries called directly. Peers make the same pixels from the same bytes, but for the
// multiplication by alpha, which stb_image and libpng do not know; stb_image_write takes the bytes of a pixel as red,
// green, blue, alpha.

#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <jpeglib.h>
#include <png.h>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_TGA
#include <stb/stb_image.h>
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace {

using namespace VFoundation;

constexpr unsigned kSide = 4096;
constexpr std::size_t kPixels = std::size_t{kSide} * kSide;
constexpr std::size_t kBytes = 4 * kPixels;

/// A picture like a photograph: smooth slopes with a little noise, and every alpha there is.
std::vector<std::uint32_t> const& Picture() {
    static std::vector<std::uint32_t> const s_picture = [] {
        std::vector<std::uint32_t> pixels(kPixels);
        std::uint32_t noise = 1;
        for (unsigned y = 0; y < kSide; ++y) {
            for (unsigned x = 0; x < kSide; ++x) {
                noise = noise * 1664525 + 1013904223;
                std::uint32_t const red = (x / 16 + (noise >> 30)) & 0xFF;
                std::uint32_t const green = (y / 16 + (noise >> 28 & 3)) & 0xFF;
                std::uint32_t const blue = ((x + y) / 32) & 0xFF;
                pixels[std::size_t{y} * kSide + x] = (x ^ y) << 24 | red << 16 | green << 8 | blue;
            }
        }
        return pixels;
    }();
    return s_picture;
}

/// The pictures' files, in a folder of their own that goes when the program ends.
class Files {
  public:
    static Files const& Get() {
        static Files const s_files;
        return s_files;
    }
    ~Files() { std::filesystem::remove_all(m_folder); }

    std::string targa, jpeg, png, saved;

  private:
    Files() {
        char pattern[] = "/tmp/ImageBenchXXXXXX";
        if (!::mkdtemp(pattern)) {
            std::abort();
        }
        m_folder = pattern;
        targa = m_folder + "/picture.tga";
        jpeg = m_folder + "/picture.jpg";
        png = m_folder + "/picture.png";
        saved = m_folder + "/saved.tga";
        VImage image;
        image.SetImageRef(
            VBitmapImage::Create(kSide, kSide, 4 * kSide, nullptr, Picture().data(), kBytes, nullptr));
        VImageIOTarga().SaveImageToFile(image, targa.c_str());
        WriteJpeg();
        WritePng();
    }
    void WriteJpeg() const {
        std::FILE* const file = std::fopen(jpeg.c_str(), "wb");
        jpeg_compress_struct info{};
        jpeg_error_mgr errors{};
        info.err = jpeg_std_error(&errors);
        jpeg_create_compress(&info);
        jpeg_stdio_dest(&info, file);
        info.image_width = info.image_height = kSide;
        info.input_components = 4;
        info.in_color_space = JCS_EXT_BGRX;
        jpeg_set_defaults(&info);
        jpeg_set_quality(&info, 85, TRUE);
        jpeg_start_compress(&info, TRUE);
        while (info.next_scanline < kSide) {
            auto* row = const_cast<JSAMPROW>(
                reinterpret_cast<JSAMPLE const*>(&Picture()[std::size_t{info.next_scanline} * kSide]));
            jpeg_write_scanlines(&info, &row, 1);
        }
        jpeg_finish_compress(&info);
        jpeg_destroy_compress(&info);
        std::fclose(file);
    }
    void WritePng() const {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        image.width = image.height = kSide;
        image.format = PNG_FORMAT_BGRA;
        png_image_write_to_file(&image, png.c_str(), 0, Picture().data(), 0, nullptr);
    }
    std::string m_folder;
};

void CountPixels(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(kBytes) * state.iterations());
}

// Targa

VData const& TargaBytes() {
    static VData const s_bytes = [] {
        VData bytes(std::filesystem::file_size(Files::Get().targa));
        std::FILE* const file = std::fopen(Files::Get().targa.c_str(), "rb");
        if (std::fread(bytes.Bytes(), 1, bytes.Length(), file) != bytes.Length()) {
            std::abort();
        }
        std::fclose(file);
        return bytes;
    }();
    return s_bytes;
}

void CopyPixels(benchmark::State& state) {
    for (auto _ : state) {
        auto* const copy = static_cast<unsigned char*>(std::malloc(kBytes));
        std::memcpy(copy, TargaBytes().Bytes() + 18, kBytes);
        benchmark::DoNotOptimize(copy[kBytes / 2]);
        std::free(copy);
    }
    CountPixels(state);
}
BENCHMARK(CopyPixels)->Name("Copy/fresh memory")->Unit(benchmark::kMillisecond);

void CopyPixelsToUsedMemory(benchmark::State& state) {
    std::vector<unsigned char> copy(kBytes);
    for (auto _ : state) {
        std::memcpy(copy.data(), TargaBytes().Bytes() + 18, kBytes);
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
    CountPixels(state);
}
BENCHMARK(CopyPixelsToUsedMemory)->Name("Copy/used memory")->Unit(benchmark::kMillisecond);

void DecodeTargaData(benchmark::State& state) {
    for (auto _ : state) {
        VImage image;
        if (!VImageIOTarga().ConvertDataToImage(TargaBytes(), image)) {
            state.SkipWithError("not decoded");
        }
    }
    CountPixels(state);
}
BENCHMARK(DecodeTargaData)->Name("Targa/data")->Unit(benchmark::kMillisecond);

void DecodeTargaDataWithStb(benchmark::State& state) {
    for (auto _ : state) {
        int width = 0, height = 0, channels = 0;
        auto* const pixels = stbi_load_from_memory(
            TargaBytes().Bytes(), static_cast<int>(TargaBytes().Length()), &width, &height, &channels, 4);
        benchmark::DoNotOptimize(pixels[kBytes / 2]);
        stbi_image_free(pixels);
    }
    CountPixels(state);
}
BENCHMARK(DecodeTargaDataWithStb)->Name("Targa/data, stb_image")->Unit(benchmark::kMillisecond);

void Load(benchmark::State& state, IImageIO const& codec, std::string const& path) {
    for (auto _ : state) {
        auto const image = VObjectRef<VImage>::Adopt(codec.LoadImageFromFile(path.c_str()));
        if (!image) {
            state.SkipWithError("not loaded");
        }
    }
    CountPixels(state);
}

void LoadTarga(benchmark::State& state) {
    Load(state, VImageIOTarga(), Files::Get().targa);
}
BENCHMARK(LoadTarga)->Name("Targa/file")->Unit(benchmark::kMillisecond);

void LoadTargaWithStb(benchmark::State& state) {
    for (auto _ : state) {
        int width = 0, height = 0, channels = 0;
        auto* const pixels = stbi_load(Files::Get().targa.c_str(), &width, &height, &channels, 4);
        benchmark::DoNotOptimize(pixels[kBytes / 2]);
        stbi_image_free(pixels);
    }
    CountPixels(state);
}
BENCHMARK(LoadTargaWithStb)->Name("Targa/file, stb_image")->Unit(benchmark::kMillisecond);

void SaveTarga(benchmark::State& state) {
    VImage image;
    image.SetImageRef(
        VBitmapImage::Create(kSide, kSide, 4 * kSide, nullptr, Picture().data(), kBytes, nullptr));
    VString const path(Files::Get().saved.c_str());
    bool const flip = state.range(0) != 0;
    for (auto _ : state) {
        if (!VImageIOTarga().SaveImageFromPixelData(image, path, flip)) {
            state.SkipWithError("not saved");
        }
    }
    CountPixels(state);
}
BENCHMARK(SaveTarga)->Name("Targa/save")->ArgName("flip")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void SaveTargaWithStb(benchmark::State& state) {
    stbi_write_tga_with_rle = 0;
    for (auto _ : state) {
        if (!stbi_write_tga(Files::Get().saved.c_str(), kSide, kSide, 4, Picture().data())) {
            state.SkipWithError("not saved");
        }
    }
    CountPixels(state);
}
BENCHMARK(SaveTargaWithStb)->Name("Targa/save, stb_image_write")->Unit(benchmark::kMillisecond);

void WritePixels(benchmark::State& state) {
    for (auto _ : state) {
        std::FILE* const file = std::fopen(Files::Get().saved.c_str(), "wb");
        if (std::fwrite(Picture().data(), 1, kBytes, file) != kBytes) {
            state.SkipWithError("not written");
        }
        std::fclose(file);
    }
    CountPixels(state);
}
BENCHMARK(WritePixels)->Name("Targa/save, one fwrite")->Unit(benchmark::kMillisecond);

// JPEG

void LoadJpeg(benchmark::State& state) {
    Load(state, VImageIOJPEG(), Files::Get().jpeg);
}
BENCHMARK(LoadJpeg)->Name("JPEG")->Unit(benchmark::kMillisecond);

void LoadJpegDirectly(benchmark::State& state) {
    for (auto _ : state) {
        std::FILE* const file = std::fopen(Files::Get().jpeg.c_str(), "rb");
        jpeg_decompress_struct info{};
        jpeg_error_mgr errors{};
        info.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&info);
        jpeg_stdio_src(&info, file);
        jpeg_read_header(&info, TRUE);
        info.out_color_space = JCS_EXT_BGRA;
        jpeg_start_decompress(&info);
        auto* const pixels = static_cast<unsigned char*>(std::malloc(kBytes));
        while (info.output_scanline < info.output_height) {
            auto* row = pixels + std::size_t{4} * kSide * info.output_scanline;
            jpeg_read_scanlines(&info, &row, 1);
        }
        jpeg_finish_decompress(&info);
        jpeg_destroy_decompress(&info);
        benchmark::DoNotOptimize(pixels[kBytes / 2]);
        std::free(pixels);
        std::fclose(file);
    }
    CountPixels(state);
}
BENCHMARK(LoadJpegDirectly)->Name("JPEG, libjpeg-turbo")->Unit(benchmark::kMillisecond);

// PNG

void LoadPng(benchmark::State& state) {
    Load(state, VImageIOPNG(), Files::Get().png);
}
BENCHMARK(LoadPng)->Name("PNG")->Unit(benchmark::kMillisecond);

void LoadPngDirectly(benchmark::State& state) {
    for (auto _ : state) {
        std::FILE* const file = std::fopen(Files::Get().png.c_str(), "rb");
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, file);
        png_read_info(png, info);
        png_set_bgr(png);
        png_read_update_info(png, info);
        auto* const pixels = static_cast<unsigned char*>(std::malloc(kBytes));
        for (std::size_t y = 0; y < kSide; ++y) {
            png_read_row(png, pixels + 4 * kSide * y, nullptr);
        }
        png_read_end(png, nullptr);
        png_destroy_read_struct(&png, &info, nullptr);
        benchmark::DoNotOptimize(pixels[kBytes / 2]);
        std::free(pixels);
        std::fclose(file);
    }
    CountPixels(state);
}
BENCHMARK(LoadPngDirectly)->Name("PNG, libpng")->Unit(benchmark::kMillisecond);

} // namespace
