// Writes the JPEG files beside it; make_pictures.py compiles and runs it, and finds out their pixels.

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <jpeglib.h>

namespace {

constexpr JDIMENSION kWidth = 21;
constexpr JDIMENSION kHeight = 18;

struct Picture {
    char const* name;
    J_COLOR_SPACE samples;
    J_COLOR_SPACE stored;
    int sampling = 1; // of the first component
    bool isProgressive = false;
    bool isArithmetic = false;
    unsigned restartInterval = 0;
    bool hasOrientation = false;
};

constexpr Picture kPictures[] = {
    {"colour", JCS_RGB, JCS_YCbCr},
    {"colour-subsampled", JCS_RGB, JCS_YCbCr, 2},
    {"colour-progressive", JCS_RGB, JCS_YCbCr, 2, true},
    {"adobe-rgb", JCS_RGB, JCS_RGB},
    {"grey", JCS_GRAYSCALE, JCS_GRAYSCALE},
    {"grey-progressive", JCS_GRAYSCALE, JCS_GRAYSCALE, 1, true},
    {"cmyk", JCS_CMYK, JCS_CMYK},
    {"ycck", JCS_CMYK, JCS_YCCK},
    {"ycck-progressive", JCS_CMYK, JCS_YCCK, 1, true},
    {"arithmetic", JCS_RGB, JCS_YCbCr, 1, false, true},
    {"arithmetic-progressive", JCS_RGB, JCS_YCbCr, 1, true, true},
    {"restart", JCS_RGB, JCS_YCbCr, 1, false, false, 2},
    {"orientation", JCS_RGB, JCS_YCbCr, 1, false, false, 0, true},
};

/// Exif data that says nothing but "turn clockwise".
constexpr unsigned char kTurned[] =
    "Exif\0\0MM\0\x2A\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0";

void Write(Picture const& picture) {
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    std::FILE* const file = std::fopen((std::string(picture.name) + ".jpg").c_str(), "wb");
    jpeg_stdio_dest(&info, file);
    info.image_width = kWidth;
    info.image_height = kHeight;
    info.in_color_space = picture.samples;
    info.input_components = picture.samples == JCS_GRAYSCALE ? 1 : picture.samples == JCS_RGB ? 3 : 4;
    jpeg_set_defaults(&info);
    jpeg_set_colorspace(&info, picture.stored);
    info.write_Adobe_marker = picture.stored != JCS_YCbCr && picture.stored != JCS_GRAYSCALE;
    info.comp_info[0].h_samp_factor = info.comp_info[0].v_samp_factor = picture.sampling;
    info.arith_code = picture.isArithmetic;
    info.restart_interval = picture.restartInterval;
    jpeg_set_quality(&info, 85, TRUE);
    if (picture.isProgressive) {
        jpeg_simple_progression(&info);
    }
    jpeg_start_compress(&info, TRUE);
    if (picture.hasOrientation) {
        jpeg_write_marker(&info, JPEG_APP0 + 1, kTurned, sizeof kTurned - 1);
    }
    std::vector<JSAMPLE> row(kWidth * static_cast<unsigned>(info.input_components));
    while (info.next_scanline < kHeight) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::size_t const x = i / static_cast<std::size_t>(info.input_components);
            std::size_t const c = i % static_cast<std::size_t>(info.input_components);
            row[i] = static_cast<JSAMPLE>(255 * ((x * (c + 1) + info.next_scanline * (3 - c)) % 40) / 39);
        }
        JSAMPROW rows[] = {row.data()};
        jpeg_write_scanlines(&info, rows, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(file);
}

} // namespace

int main() {
    for (Picture const& picture : kPictures) {
        Write(picture);
    }
}
