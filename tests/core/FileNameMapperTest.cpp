#include <gtest/gtest.h>

#include "core/FileNameMapper.h"
#include "core/NativePath.h"

using namespace Velun;

namespace {

struct Mapping {
    const char* name;
    const char* fileName;
    const char* fileType;
};

}  // namespace

TEST(FileNameMapperTest, ComposesBackslashPathsAndFindsTheExtension) {
    FileNameMapper mapper(".\\sound");
    const Mapping table[] = {
        {"boom.wav", ".\\sound\\boom.wav", "wav"},
        {"a/b", ".\\sound\\a\\b", ""},
        {"a.b/c", ".\\sound\\a.b\\c", ""},
        {"x.tar.gz", ".\\sound\\x.tar.gz", "gz"},
        {"ends.", ".\\sound\\ends.", ""},
        {"", ".\\sound\\", ""},
        {"Deep/Mixed.Case/File.OGG", ".\\sound\\Deep\\Mixed.Case\\File.OGG", "OGG"},
    };
    for (const Mapping& m : table) {
        NameMapper::ResourceInfo info = mapper.getResourceInfo(m.name);
        EXPECT_EQ(m.name, info.mName);
        EXPECT_EQ(m.fileName, info.mFileName) << m.name;
        EXPECT_EQ(m.fileType, info.mFileType) << m.name;
    }
}

TEST(FileNameMapperTest, ModelNameMapsBelowTheModelsDirectory) {
    FileNameMapper mapper(".\\models");
    NameMapper::ResourceInfo info = mapper.getResourceInfo("tree/oak.ms3d");
    EXPECT_EQ(".\\models\\tree\\oak.ms3d", info.getFileName());
    EXPECT_EQ("ms3d", info.getFileType());
    EXPECT_EQ("tree/oak.ms3d", info.getName());
}

TEST(FileNameMapperTest, NativePathIsWhatALoaderOpens) {
    FileNameMapper mapper(".\\textures");
    NameMapper::ResourceInfo info = mapper.getResourceInfo("terrain/grass.png");
#ifdef _WIN32
    EXPECT_EQ(".\\textures\\terrain\\grass.png", toNativePath(info.mFileName));
#else
    EXPECT_EQ("./textures/terrain/grass.png", toNativePath(info.mFileName));
    // Paths written inside model files take the same way.
    EXPECT_EQ("./jeep1.jpg", toNativePath(".\\jeep1.jpg"));
    EXPECT_EQ("/abs/already/native", toNativePath("/abs/already/native"));
#endif
}
