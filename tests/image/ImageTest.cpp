// Images, their cache and the way from a path to a file.

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectContainer.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOTarga.h"
#include "tests/image/ImageTestSupport.h"

#include <sys/stat.h>
#include <thread>

namespace {

using namespace image_test;

class Image : public ImageTest {
  protected:
    static ImageRef FromFile(std::string const& path) {
        return ImageRef::Adopt(VImage::ImageFromFile(path.c_str()));
    }
    std::string NewTarga(std::string const& name) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::filesystem::copy_file(IMAGE_TEST_DATA "/pillow_colour.tga", Path(name));
        return Path(name);
    }
};

TEST_F(Image, AdoptsBitmapsOverSoundMemory) {
    unsigned long released = 0;
    std::uint32_t const pixels[6] = {};
    auto const create = [&](std::uint32_t width, std::uint32_t height, unsigned long row, unsigned long size,
                            unsigned long offset = 0) {
        return VBitmapImage::Create(width, height, row, &released,
                                    reinterpret_cast<char const*>(pixels) + offset, size,
                                    [](void* info, void const*, unsigned long bytes) {
                                        *static_cast<unsigned long*>(info) += bytes;
                                    });
    };
    for (CGImage const* const refused : {create(0, 1, 12, 24), create(3, 0, 12, 24), create(3, 2, 8, 24),
                                         create(3, 2, 14, 28), create(3, 2, 12, 23), create(1, 1, 4, 8, 1)}) {
        EXPECT_EQ(refused, nullptr);
    }
    EXPECT_EQ(VBitmapImage::Create(1, 1, 4, nullptr, nullptr, 4, nullptr), nullptr);
    {
        VImage image;
        image.SetImageRef(create(3, 2, 12, 24));
        EXPECT_EQ(image.Width(), 3U);
        EXPECT_EQ(image.Height(), 2U);
        image.SetImageRef(create(1, 1, 4, 4));
        EXPECT_EQ(released, 24U);
        image.SetImageRef(nullptr);
        EXPECT_EQ(released, 28U);
        EXPECT_EQ(image.Height(), 0U);
        image.SetImageRef(create(1, 1, 4, 4));
    }
    EXPECT_EQ(released, 32U);
}

TEST_F(Image, DecodesAFileOnce) {
    std::string const path = NewTarga("a/PICTURE.TGA"); // extensions in any case
    ImageRef const first = FromFile(path);
    ASSERT_TRUE(first);
    EXPECT_STREQ(first->GetName().CString(), path.c_str());
    EXPECT_FALSE(first->HasAlpha());
    EXPECT_EQ(first->RetainCount(), 2); // the cache's and ours
    std::filesystem::remove(path);
    std::string spelled = path;
    spelled[spelled.rfind('/')] = '\\';
    EXPECT_EQ(FromFile(spelled).Get(), first.Get());
    EXPECT_STREQ(first->GetName().CString(), path.c_str());
    // A codec gives the cached image the spelling it was asked with, and only codecs ask whether the cache is on.
    EXPECT_EQ(ImageRef::Adopt(VImageIOJPEG().LoadImageFromFile(spelled.c_str())).Get(), first.Get());
    EXPECT_STREQ(first->GetName().CString(), spelled.c_str());
    VImage::ms_cacheEnabled = false;
    EXPECT_EQ(FromFile(path).Get(), first.Get());
    EXPECT_EQ(VImageIOTarga().LoadImageFromFile(path.c_str()), nullptr);
}

TEST_F(Image, CachesUnderTheFirstName) {
    auto const a = ImageRef::Adopt(VImage::New());
    auto const b = ImageRef::Adopt(VImage::New());
    EXPECT_STREQ(a->GetName().CString(), "");
    EXPECT_TRUE(VImage::AddNamedImageToCache("icon", a.Get()));
    EXPECT_TRUE(VImage::AddNamedImageToCache("icon", b.Get())); // taken: nothing is added
    EXPECT_TRUE(VImage::AddNamedImageToCache("ICON", b.Get()));
    EXPECT_EQ(VImage::FindImageInCacheWithName("icon"), a.Get());
    EXPECT_EQ(VImage::FindImageInCacheWithName("ICON"), b.Get());
    EXPECT_EQ(VImage::FindImageInCacheWithName(nullptr), nullptr);
    EXPECT_FALSE(VImage::AddNamedImageToCache(nullptr, a.Get()) ||
                 VImage::AddNamedImageToCache("none", nullptr));
    VImage::UninitializeClass();
    VImage::UninitializeClass();
    EXPECT_EQ(a->RetainCount(), 1);
    EXPECT_FALSE(VImage::IsCacheEnabled() || VImage::AddNamedImageToCache("icon", a.Get()));
    EXPECT_EQ(VImage::FindImageInCacheWithName("icon"), nullptr);
    std::string const path = NewTarga("uncached.tga");
    ImageRef const uncached = FromFile(path);
    EXPECT_NE(FromFile(path).Get(), uncached.Get());
}

TEST_F(Image, SaysWhatItCouldNotLoad) {
    NewTarga("resources/icons/a.tga");
    *VImage::DefaultImageResourcePath() = Path("resources").c_str();
    EXPECT_STREQ(FromFile("icons\\a.tga")->GetName().CString(), "icons/a.tga");
    std::string const jpeg = "Failed to load image with JPG Data provider";
    std::string const png = "Failed to load image with PNG Data provider";
    for (char const* const name : {"junk.png", "junk.JPeG", "junk.tga"}) {
        std::ofstream(Path(name)) << "anything";
    }
    std::filesystem::create_directory(Path("folder.png"));
    std::filesystem::create_directory(Path("folder.tga"));
    ASSERT_EQ(::mkfifo(Path("pipe.tga").c_str(), 0600) + ::mkfifo(Path("pipe.jpg").c_str(), 0600), 0);
    auto const failure = [](std::string const& path) { return "Failed to load image: " + path + "\n"; };
    std::pair<std::string, std::string> const cases[] = {
        {"missing.jpg", jpeg + failure(Path("resources/missing.jpg"))},
        {"missing.PNG", png + failure(Path("resources/missing.PNG"))},
        {"missing.tga", failure(Path("resources/missing.tga"))},
        {Path("junk.png"), png + failure(Path("junk.png"))},
        {Path("junk.JPeG"), jpeg + failure(Path("junk.JPeG"))},
        {Path("junk.tga"), ""}, // was read, but is no picture
        {Path("folder.png"), png + failure(Path("folder.png"))},
        {Path("folder.tga"), failure(Path("folder.tga"))},
        {Path("pipe.tga"), failure(Path("pipe.tga"))},
        {Path("pipe.jpg"), jpeg + failure(Path("pipe.jpg"))},
        {"picture.gif", ""},
        {"", ""},
    };
    for (auto const& [path, errors] : cases) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(FromFile(path)) << path;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), errors) << path;
    }
    EXPECT_EQ(VImage::ImageFromFile(nullptr), nullptr);
}

TEST_F(Image, UsesTheFirst260CharactersOfAPath) {
    std::string const folder = Path(std::string(250 - Path("").size(), 'd'));
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(IMAGE_TEST_DATA "/pillow_colour.tga", folder + "/name.tga");
    ImageRef const image = FromFile(folder + "//name.tga"); // 260 characters
    EXPECT_TRUE(image);
    EXPECT_EQ(FromFile(folder + "//name.tgabeyond").Get(), image.Get());
    EXPECT_FALSE(FromFile(folder + "///name.tga")); // the extension is cut off
}

TEST_F(Image, IsTheSameForThreadsThatLoadAtOnce) {
    std::vector<std::string> const paths = {NewTarga("a.tga"), NewTarga("b.tga")};
    for (int round = 0; round < 20; ++round) {
        VImage::UninitializeClass();
        VImage::InitializeClass();
        std::vector<ImageRef> images[4];
        std::vector<std::thread> threads;
        for (auto& mine : images) {
            threads.emplace_back([&mine, &paths] {
                for (auto const& path : paths) {
                    mine.push_back(FromFile(path));
                    ImageRef::Adopt(VImageIOTarga().LoadImageFromFile(path.c_str()))->GetName();
                }
            });
        }
        for (std::size_t i = 0; i < threads.size(); ++i) {
            threads[i].join();
            EXPECT_EQ(images[i][0].Get(), VImage::FindImageInCacheWithName(paths[0].c_str()));
            EXPECT_EQ(images[i][1].Get(), VImage::FindImageInCacheWithName(paths[1].c_str()));
        }
        EXPECT_EQ(VImage::ms_imageCache->Count(), 2);
    }
}

} // namespace
