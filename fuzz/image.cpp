// Image files from arbitrary bytes through the DevIL loader. The first byte picks the
// file type (so each format's reader sees inputs meant for it), the rest is the file.

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "QuietLog.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "texture/TextureSource.h"

namespace {

// Every file type the loader takes; scripts/fuzz.sh seeds them by this order.
const char* const kTypes[] = {"png", "jpg", "tga", "bmp", "dds"};
const std::size_t kTypeCount = sizeof kTypes / sizeof kTypes[0];

Velun::DevILTextureSourceLoader* gLoader = nullptr;
std::string gDirectory;

void removeInput() {
    for (const char* type : kTypes)
        std::remove((gDirectory + "/input." + type).c_str());
    rmdir(gDirectory.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::startQuietEngine();
    gLoader = new Velun::DevILTextureSourceLoader();
    gLoader->initialize();
    gDirectory = "/tmp/velun-fuzz-image-" + std::to_string(getpid());
    mkdir(gDirectory.c_str(), 0700);
    std::atexit(removeInput);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1)
        return 0;
    std::string type = kTypes[data[0] % kTypeCount];
    std::string path = gDirectory + "/input." + type;
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return 0;
    std::fwrite(data + 1, 1, size - 1, file);
    std::fclose(file);

    Velun::NameMapper::ResourceInfo info("input." + type, path, type);
    Dorvan::SharedPtr<Velun::TextureSource> image = gLoader->load(info);
    if (image) {
        // Touch the first and the last pixel the description promises.
        const Velun::TextureInfo& description = image->getTextureInfo();
        volatile std::uint8_t sink = 0;
        const std::uint8_t* first = static_cast<const std::uint8_t*>(image->getPixel(0, 0, 0));
        const std::uint8_t* last = static_cast<const std::uint8_t*>(
            image->getPixel(description.getWidth() - 1, description.getHeight() - 1, 0));
        if (first && last)
            sink = first[0] ^ last[description.getPixelSize() - 1];
        (void)sink;
    }
    return 0;
}
