#pragma once

// A started engine whose working directory is a fresh temporary folder with "models"
// and "textures" below it, holding links to the test data, and the name mappers that
// setup would install. Each test leaves the engine shut down and the folder removed.

#include <unistd.h>

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/FileNameMapper.h"
#include "core/ResourceManager.h"
#include "geometry/GeometryObject.h"
#include "geometry/ObjectManager.h"
#include "loader/Ms3dWriter.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"
#include "support/Engine.h"
#include "texture/TextureManager.h"

class DataDirectory {
public:
    DataDirectory() : mOldDirectory(std::filesystem::current_path()) {
        namespace fs = std::filesystem;
        char pattern[] = "/tmp/velun-loader-XXXXXX";
        if (!mkdtemp(pattern))
            return;
        mDirectory = pattern;
        for (const char* from : {"models", "textures", "images"}) {
            fs::path to = mDirectory / (*from == 'm' ? "models" : "textures");
            fs::create_directories(to);
            for (const auto& entry : fs::directory_iterator(fs::path(VELUN_TEST_DATA_DIR) / from))
                fs::create_symlink(entry.path(), to / entry.path().filename());
        }
        fs::current_path(mDirectory);
    }
    ~DataDirectory() {
        std::filesystem::current_path(mOldDirectory);
        if (!mDirectory.empty())
            std::filesystem::remove_all(mDirectory);
    }

    const std::filesystem::path& path() const { return mDirectory; }

    // Installs the mappers that setup would: ".\models" and ".\textures".
    static void mapNames() {
        Velun::ResourceManager& resources = Velun::VelunCore::getSingleton().getResourceManager();
        resources.getObjectManager().setObjectNameMapper(
            Dorvan::SharedPtr<Velun::NameMapper>(new Velun::FileNameMapper(".\\models")));
        resources.getTextureManager().setTextureSourceNameMapper(
            Dorvan::SharedPtr<Velun::NameMapper>(new Velun::FileNameMapper(".\\textures")));
    }

private:
    std::filesystem::path mOldDirectory;
    std::filesystem::path mDirectory;
};

// The resource of a file below textures/, of the type its extension names.
inline Velun::NameMapper::ResourceInfo textureFile(const std::string& name) {
    return Velun::NameMapper::ResourceInfo(name, ".\\textures\\" + name, name.substr(name.rfind('.') + 1));
}

// A texel of an image of bytes in grey, RGB or RGBA order.
typedef std::array<int, 4> Rgba;
inline Rgba texel(const Velun::TextureSource& image, unsigned int x, unsigned int y) {
    const unsigned char* p = static_cast<const unsigned char*>(image.getPixel(x, y, 0));
    const unsigned int channels = image.getTextureInfo().getChannels();
    if (channels == 1)
        return {p[0], p[0], p[0], 255};
    return {p[0], p[1], p[2], channels == 3 ? 255 : p[3]};
}

// With the image and model loaders registered.
class EngineFixture : public VelunTest::EngineTest {
protected:
    void SetUp() override {
        ASSERT_FALSE(mData.path().empty());
        EngineTest::SetUp();
        DataDirectory::mapNames();
        images.registerPlugin();
        models.registerPlugin();
    }
    void TearDown() override {
        models.unregisterPlugin();
        images.unregisterPlugin();
        EngineTest::TearDown();
    }

    Velun::TextureManager& textures() { return core.getResourceManager().getTextureManager(); }
    Velun::ObjectManager& objects() { return core.getResourceManager().getObjectManager(); }

    // The object of a name, and the first log line its loading wrote (the object manager
    // adds one of its own after the loader's).
    std::unique_ptr<Velun::GeometryObject> create(const std::string& name, std::string* line = nullptr) {
        testing::internal::CaptureStderr();
        Velun::ObjectNode* node = objects().createObject(name);
        std::string written = testing::internal::GetCapturedStderr();
        if (line)
            *line = written.substr(0, written.find('\n') + 1);
        else
            EXPECT_EQ("", written);
        return std::unique_ptr<Velun::GeometryObject>(dynamic_cast<Velun::GeometryObject*>(node));
    }

    // Writes a file below models/ or textures/.
    void write(const std::string& path, const std::vector<unsigned char>& bytes) {
        ms3dtest::save((mData.path() / path).string(), bytes);
    }

    DataDirectory mData;
    Velun::DevILPlugin images;
    Velun::Ms3dPlugin models;
};
