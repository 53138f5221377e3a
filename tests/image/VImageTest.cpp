// Images, their cache and the way from a path to a file.

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectContainer.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/Stress.h"

#include <latch>
#include <sys/stat.h>

namespace {

using namespace image_test;

class VImageTest : public ImageTest {
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

TEST_F(VImageTest, AdoptsBitmapsOverSoundMemory) {
    unsigned long released = 0;
    alignas(4) char const pixels[24] = {};
    auto const create = [&](std::uint32_t width, unsigned long row, unsigned long size,
                            unsigned long offset = 0) {
        return VBitmapImage::Create(width, 2, row, &released, pixels + offset, size,
                                    [](void* info, void const*, unsigned long bytes) {
                                        *static_cast<unsigned long*>(info) += bytes;
                                    });
    };
    EXPECT_EQ(create(0, 12, 24), nullptr);
    EXPECT_EQ(create(3, 8, 24), nullptr);
    EXPECT_EQ(create(3, 14, 28), nullptr);
    EXPECT_EQ(create(3, 12, 23), nullptr);
    EXPECT_EQ(create(1, 4, 8, 1), nullptr);
    EXPECT_EQ(VBitmapImage::Create(1, 1, 4, nullptr, nullptr, 4, nullptr), nullptr);
    {
        VImage image;
        image.SetImageRef(create(3, 12, 24));
        EXPECT_EQ(image.Width() * 10 + image.Height(), 32U);
        image.SetImageRef(create(1, 4, 8));
        EXPECT_EQ(released, 24U);
        image.SetImageRef(nullptr);
        EXPECT_EQ(released + image.Height(), 32U);
        image.SetImageRef(create(1, 4, 8));
    }
    EXPECT_EQ(released, 40U);
}

TEST_F(VImageTest, DecodesAFileOnce) {
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

TEST_F(VImageTest, CachesUnderTheFirstName) {
    auto const a = ImageRef::Adopt(VImage::New());
    auto const b = ImageRef::Adopt(VImage::New());
    EXPECT_TRUE(VImage::AddNamedImageToCache("icon", a.Get()));
    EXPECT_TRUE(VImage::AddNamedImageToCache("icon", b.Get())); // taken: nothing is added
    EXPECT_TRUE(VImage::AddNamedImageToCache("ICON", b.Get()));
    EXPECT_EQ(VImage::ms_imageCache.load()->Count(), 2);
    EXPECT_EQ(VImage::FindImageInCacheWithName("icon"), a.Get());
    EXPECT_EQ(VImage::FindImageInCacheWithName(nullptr), nullptr);
    EXPECT_FALSE(VImage::AddNamedImageToCache(nullptr, a.Get()));
    EXPECT_FALSE(VImage::AddNamedImageToCache("none", nullptr));
    VImage::UninitializeClass();
    VImage::UninitializeClass();
    EXPECT_EQ(a->RetainCount(), 1);
    EXPECT_FALSE(VImage::IsCacheEnabled());
    EXPECT_FALSE(VImage::AddNamedImageToCache("icon", a.Get()));
    ImageRef const uncached = FromFile(NewTarga("uncached.tga"));
    EXPECT_NE(FromFile(Path("uncached.tga")).Get(), uncached.Get());
}

TEST_F(VImageTest, IsNullOrNotSavedWithoutMemory) {
    VImage::ms_cacheEnabled = false;
    VImageIOTarga const targa(false, VImageIOTarga::Saving::kReplacing);
    VImageIOJPEG const jpeg;
    VImageIOPNG const png;
    ImageRef const whole = FromFile(NewTarga("a.tga"));
    testing::internal::CaptureStderr();
    for (auto const& [codec, path] :
         {std::pair<IImageIO const*, char const*>{&targa, IMAGE_TEST_DATA "/pillow_alpha.tga"},
          {&jpeg, IMAGE_TEST_DATA "/colour.jpg"},
          {&png, IMAGE_TEST_DATA "/rgba-8.png"}}) {
        for (bool const isCached : {false, true}) {
            testing_support::FailEachAllocation([&codec = codec, &path = path, isCached] {
                if (isCached) {
                    VImage::UninitializeClass();
                    VImage::InitializeClass();
                }
                ImageRef image;
                EXPECT_NO_THROW(image = ImageRef::Adopt(isCached ? VImage::ImageFromFile(path)
                                                                 : codec->LoadImageFromFile(path)));
                EXPECT_TRUE(image || testing_support::AllocationHasFailed());
                EXPECT_LE(VImage::ms_imageNames.load()->Count(), VImage::ms_imageCache.load()->Count());
            });
        }
        VImage::ms_cacheEnabled = false;
    }
    testing_support::FailEachAllocation([&] {
        bool isSaved = false;
        EXPECT_NO_THROW(isSaved = targa.SaveImageToFile(*whole, m_scratch.Path()));
        EXPECT_TRUE(isSaved || testing_support::AllocationHasFailed());
    });
    std::string const errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("Caught and unknown exception whilst loading image\nFailed to load"), errors.npos);
    EXPECT_NE(errors.find("JPG Data providerFailed to load image: "), errors.npos);
}

TEST_F(VImageTest, SaysWhatItCouldNotLoad) {
    NewTarga("resources/icons/a.tga");
    *VImage::DefaultImageResourcePath() = Path("resources").c_str();
    EXPECT_STREQ(FromFile("icons\\a.tga")->GetName().CString(), "icons/a.tga");
    auto const expect = [](std::string const& path, std::string const& errors) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(FromFile(path)) << path;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), errors) << path;
    };
    for (auto const& [extension, start] : {std::pair{".JpEg", "Failed to load image with JPG Data provider"},
                                           {".PNG", "Failed to load image with PNG Data provider"},
                                           {".tga", ""}}) {
        std::string const junk = Path("junk") + extension;
        std::ofstream(junk) << "anything";
        std::string const folder = Path("folder") + extension;
        std::filesystem::create_directory(folder);
        std::string const pipe = Path("pipe") + extension;
        EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        std::string const missing = std::string("missing") + extension;
        std::string const text = std::string(start) + "Failed to load image: ";
        expect(missing, text + Path("resources/" + missing) + "\n");
        expect(folder, text + folder + "\n");
        expect(pipe, text + pipe + "\n");
        // A Targa file that was read but is no picture is refused silently.
        expect(junk, *start == '\0' ? "" : text + junk + "\n");
    }
    expect("picture.gif", "");
    expect("", "");
}

TEST_F(VImageTest, UsesTheFirst260CharactersOfAPath) {
    std::string const folder = Path(std::string(250 - Path("").size(), 'd'));
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(IMAGE_TEST_DATA "/pillow_colour.tga", folder + "/name.tga");
    ImageRef const image = FromFile(folder + "//name.tga"); // 260 characters
    EXPECT_TRUE(image);
    EXPECT_EQ(FromFile(folder + "//name.tgabeyond").Get(), image.Get());
    EXPECT_FALSE(FromFile(folder + "///name.tga")); // the extension is cut off
}

TEST_F(VImageTest, IsTheSameForThreadsThatLoadAtOnce) {
    std::vector<std::string> const paths = {NewTarga("a.tga"), IMAGE_TEST_DATA "/rgba-8.png",
                                            IMAGE_TEST_DATA "/colour.jpg"};
    for (int round = 0; round < 200; ++round) {
        VImage::UninitializeClass();
        VImage::InitializeClass();
        std::latch start(4);
        testing_support::OnThreads(4, [&](int) {
            start.arrive_and_wait();
            for (auto const& path : paths) {
                ImageRef const image = FromFile(path);
                EXPECT_TRUE(image);
                EXPECT_EQ(image.Get(), VImage::FindImageInCacheWithName(path.c_str()));
                ImageRef::Adopt(VImageIOTarga().LoadImageFromFile(path.c_str()))->GetName();
            }
        });
        EXPECT_EQ(VImage::ms_imageCache.load()->Count(), 3);
    }
}

} // namespace
