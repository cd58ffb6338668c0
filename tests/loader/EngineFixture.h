#pragma once

// A started engine whose working directory is a fresh temporary folder with "models"
// and "textures" below it, holding links to the test data, and the name mappers that
// setup would install. Each test leaves the engine shut down and the folder removed.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/FileNameMapper.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "geometry/ObjectManager.h"
#include "loader/Ms3dWriter.h"
#include "texture/TextureManager.h"

class EngineFixture : public testing::Test {
protected:
    void SetUp() override {
        namespace fs = std::filesystem;
        mOldDirectory = fs::current_path();
        char pattern[] = "/tmp/velun-loader-XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(pattern));
        mDirectory = pattern;
        fs::create_directory(mDirectory / "models");
        fs::create_directory(mDirectory / "textures");
        link(fs::path(VELUN_TEST_DATA_DIR) / "models", mDirectory / "models");
        link(fs::path(VELUN_TEST_DATA_DIR) / "textures", mDirectory / "textures");
        link(fs::path(VELUN_TEST_DATA_DIR) / "images", mDirectory / "textures");
        fs::current_path(mDirectory);

        core.startup();
        Velun::ResourceManager& resources = core.getResourceManager();
        resources.getObjectManager().setObjectNameMapper(
            Dorvan::SharedPtr<Velun::NameMapper>(new Velun::FileNameMapper(".\\models")));
        resources.getTextureManager().setTextureSourceNameMapper(
            Dorvan::SharedPtr<Velun::NameMapper>(new Velun::FileNameMapper(".\\textures")));
    }

    void TearDown() override {
        core.shutdown();
        std::filesystem::current_path(mOldDirectory);
        std::filesystem::remove_all(mDirectory);
    }

    // Writes a model below models/.
    void writeModel(const std::string& name, const std::vector<unsigned char>& bytes) {
        ms3dtest::save((mDirectory / "models" / name).string(), bytes);
    }

    Velun::VelunCore& core = Velun::VelunCore::getSingleton();
    std::filesystem::path mDirectory;

private:
    static void link(const std::filesystem::path& from, const std::filesystem::path& to) {
        for (const auto& entry : std::filesystem::directory_iterator(from))
            std::filesystem::create_symlink(entry.path(), to / entry.path().filename());
    }

    std::filesystem::path mOldDirectory;
};
