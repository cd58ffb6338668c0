// MS3D models from arbitrary bytes: the loader must refuse or load every input without
// reading outside it, and a loaded model must build objects.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "QuietLog.h"
#include "geometry/ObjectFactory.h"
#include "plugins/loader/ms3d/Ms3dObjectLoader.h"
#include "scene/ObjectNode.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::startQuietEngine();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Velun::Ms3dObjectLoader loader;
    loader.initialize();
    Velun::NameMapper::ResourceInfo info("fuzz.ms3d", ".\\models\\fuzz.ms3d", "ms3d");
    Dorvan::SharedPtr<Velun::ObjectFactory> factory = loader.load(info, data, size);
    if (factory)
        std::unique_ptr<Velun::ObjectNode>(factory->createObject());
    return 0;
}
