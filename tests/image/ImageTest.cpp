// Images, their cache and the way from a path to a file.

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectContainer.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "tests/image/ImageTestSupport.h"

#include <sys/stat.h>
#include <thread>

namespace {

using namespace VFoundation;
using namespace image_test;

class Image : public ImageTest {
  protected:
    static ImageRef FromFile(std::string const& path) {
        return ImageRef::Adopt(VImage::ImageFromFile(path.c_str()));
    }
    /// Nothing but PNG, JPEG and Targa files by other programs are at hand everywhere.
    std::string CopyTarga(std::string const& name) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::filesystem::copy_file(IMAGE_TEST_DATA "/pillow_colour.tga", Path(name));
        return Path(name);
    }
};

TEST_F(Image, TakesTheSizeOfTheBitmapItAdopts) {
    int released = 0;
    std::uint32_t const pixels[6] = {};
    auto const count = [](void* info, void const*, unsigned long size) {
        *static_cast<int*>(info) += static_cast<int>(size);
    };
    {
        VImage image;
        EXPECT_EQ(image.Width(), 0U);
        image.SetImageRef(VBitmapImage::Create(3, 2, 12, &released, pixels, sizeof pixels, count));
        EXPECT_EQ(image.Width(), 3U);
        EXPECT_EQ(image.Height(), 2U);
        image.SetImageRef(VBitmapImage::Create(1, 1, 4, &released, pixels, 4, count));
        EXPECT_EQ(released, 24);
        image.SetImageRef(nullptr);
        EXPECT_EQ(released, 28);
        EXPECT_EQ(image.Height(), 0U);
        image.SetImageRef(VBitmapImage::Create(1, 1, 4, &released, pixels, 4, count));
    }
    EXPECT_EQ(released, 32);

    auto const* const bytes = reinterpret_cast<unsigned char const*>(pixels);
    EXPECT_EQ(VBitmapImage::Create(0, 1, 12, nullptr, pixels, 24, nullptr), nullptr);
    EXPECT_EQ(VBitmapImage::Create(3, 2, 8, nullptr, pixels, 24, nullptr), nullptr);
    EXPECT_EQ(VBitmapImage::Create(3, 2, 14, nullptr, pixels, 28, nullptr), nullptr);
    EXPECT_EQ(VBitmapImage::Create(3, 2, 12, nullptr, pixels, 23, nullptr), nullptr);
    EXPECT_EQ(VBitmapImage::Create(1, 1, 4, nullptr, bytes + 1, 8, nullptr), nullptr);
    EXPECT_EQ(VBitmapImage::Create(1, 1, 4, nullptr, nullptr, 4, nullptr), nullptr);
}

TEST_F(Image, DecodesAFileOnce) {
    std::string const path = CopyTarga("a/PICTURE.TGA"); // extensions in any case
    ImageRef const first = FromFile(path);
    ASSERT_TRUE(first);
    EXPECT_STREQ(first->GetName().CString(), path.c_str());
    EXPECT_FALSE(first->HasAlpha());
    EXPECT_EQ(first->RetainCount(), 2); // the cache's and ours
    std::filesystem::remove(path);
    EXPECT_EQ(FromFile(path).Get(), first.Get());
    EXPECT_EQ(VImage::FindImageInCacheWithName(path.c_str()), first.Get());

    // '\' is '/'; a codec gives the cached image the spelling it was asked with.
    std::string spelled = path;
    spelled[spelled.rfind('/')] = '\\';
    EXPECT_EQ(FromFile(spelled).Get(), first.Get());
    EXPECT_STREQ(first->GetName().CString(), path.c_str());
    ImageRef const byCodec = ImageRef::Adopt(VImageIOJPEG().LoadImageFromFile(spelled.c_str()));
    EXPECT_EQ(byCodec.Get(), first.Get());
    EXPECT_STREQ(first->GetName().CString(), spelled.c_str());

    // Only the codecs ask whether the cache is on.
    VImage::ms_cacheEnabled = false;
    EXPECT_EQ(FromFile(path).Get(), first.Get());
    ErrorsOf([&] { EXPECT_EQ(VImageIOTarga().LoadImageFromFile(path.c_str()), nullptr); });
}

TEST_F(Image, CachesUnderTheFirstName) {
    auto const a = ImageRef::Adopt(VImage::New());
    auto const b = ImageRef::Adopt(VImage::New());
    EXPECT_STREQ(a->GetName().CString(), "");
    EXPECT_EQ(VImage::FindImageInCacheWithName("icon"), nullptr);
    EXPECT_TRUE(VImage::AddNamedImageToCache("icon", a.Get()));
    EXPECT_TRUE(VImage::AddNamedImageToCache("icon", b.Get())); // taken: nothing is added
    EXPECT_EQ(VImage::FindImageInCacheWithName("icon"), a.Get());
    EXPECT_EQ(b->RetainCount(), 1);
    EXPECT_EQ(VImage::FindImageInCacheWithName("ICON"), nullptr);
    EXPECT_EQ(VImage::FindImageInCacheWithName(nullptr), nullptr);
    EXPECT_FALSE(VImage::AddNamedImageToCache(nullptr, a.Get()));
    EXPECT_FALSE(VImage::AddNamedImageToCache("none", nullptr));

    VImage::UninitializeClass();
    VImage::UninitializeClass();
    EXPECT_EQ(a->RetainCount(), 1);
    EXPECT_FALSE(VImage::IsCacheEnabled());
    EXPECT_FALSE(VImage::AddNamedImageToCache("icon", a.Get()));
    EXPECT_EQ(VImage::FindImageInCacheWithName("icon"), nullptr);
    std::string const path = CopyTarga("uncached.tga");
    EXPECT_NE(FromFile(path).Get(), FromFile(path).Get());
}

TEST_F(Image, LooksForMissingFilesBelowTheResourcePath) {
    CopyTarga("resources/icons/a.tga");
    EXPECT_TRUE(VImage::DefaultImageResourcePath()->IsEmpty());
    ErrorsOf([&] { EXPECT_FALSE(FromFile("icons/a.tga")); });
    *VImage::DefaultImageResourcePath() = Path("resources").c_str();
    ImageRef const image = FromFile("icons\\a.tga");
    ASSERT_TRUE(image);
    EXPECT_STREQ(image->GetName().CString(), "icons/a.tga");
}

TEST_F(Image, SaysWhatItCouldNotLoad) {
    *VImage::DefaultImageResourcePath() = "/no/resources";
    std::string const jpeg = "Failed to load image with JPG Data provider";
    std::string const png = "Failed to load image with PNG Data provider";
    std::string const junk = Write("junk.png", Bytes(50, 7));
    std::filesystem::copy_file(junk, Path("junk.JPeG"));
    std::filesystem::copy_file(junk, Path("junk.tga"));
    std::filesystem::create_directory(Path("folder.tga"));
    std::filesystem::create_directory(Path("folder.png"));
    ASSERT_EQ(::mkfifo(Path("pipe.tga").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(Path("pipe.jpg").c_str(), 0600), 0);
    auto const failure = [](std::string const& path) { return "Failed to load image: " + path + "\n"; };
    std::pair<std::string, std::string> const cases[] = {
        {"missing.jpg", jpeg + failure("/no/resources/missing.jpg")},
        {"missing.png", png + failure("/no/resources/missing.png")},
        {"missing.tga", failure("/no/resources/missing.tga")},
        {junk, png + failure(junk)},
        {Path("junk.JPeG"), jpeg + failure(Path("junk.JPeG"))},
        {Path("junk.tga"), ""}, // was read, but is no picture
        {Path("folder.png"), png + failure(Path("folder.png"))},
        {Path("folder.tga"), failure(Path("folder.tga"))},
        {Path("pipe.tga"), failure(Path("pipe.tga"))},
        {Path("pipe.jpg"), jpeg + failure(Path("pipe.jpg"))},
        {Path("picture.gif"), ""},
        {"", ""},
    };
    for (auto const& [path, errors] : cases) {
        EXPECT_EQ(ErrorsOf([&, &name = path] { EXPECT_FALSE(FromFile(name)) << name; }), errors) << path;
    }
    EXPECT_EQ(VImage::ImageFromFile(nullptr), nullptr);
}

TEST_F(Image, UsesTheFirst260CharactersOfAPath) {
    std::string const folder = Path(std::string(250 - Path("").size(), 'd'));
    std::filesystem::create_directory(folder);
    std::string const name = "/name.tga";
    std::string const whole = folder + name; // 250 + 9 characters
    std::filesystem::copy_file(IMAGE_TEST_DATA "/pillow_colour.tga", whole);
    EXPECT_TRUE(FromFile(folder + "/" + name));                    // 260
    ImageRef const cut = FromFile(folder + "/" + name + "beyond"); // cut to 260
    EXPECT_EQ(cut.Get(), FromFile(folder + "/" + name).Get());
    EXPECT_FALSE(FromFile(folder + "///" + name)); // the extension is cut off
}

TEST_F(Image, IsTheSameForThreadsThatLoadAtOnce) {
    std::vector<std::string> const paths = {CopyTarga("a.tga"), CopyTarga("b.tga"), CopyTarga("c.tga")};
    constexpr int kThreads = 4;
    for (int round = 0; round < 20; ++round) {
        VImage::UninitializeClass();
        VImage::InitializeClass();
        std::vector<std::vector<ImageRef>> images(kThreads);
        std::vector<std::thread> threads;
        for (auto& mine : images) {
            threads.emplace_back([&mine, &paths] {
                for (auto const& path : paths) {
                    mine.push_back(FromFile(path));
                    ImageRef::Adopt(VImageIOTarga().LoadImageFromFile(path.c_str()))->GetName();
                }
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
        for (auto const& mine : images) {
            for (std::size_t i = 0; i < paths.size(); ++i) {
                EXPECT_EQ(mine[i].Get(), images[0][i].Get());
            }
        }
        EXPECT_EQ(VImage::ms_imageCache->Count(), 3);
    }
}

} // namespace
