#pragma once

#include "core/NameMapper.h"
#include "core/ResourceLoader.h"
#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

class ObjectFactory;

// Reads a model file into an ObjectFactory. Registered with ObjectManager, which
// initialises it if needed and asks the first loader whose canLoad accepts a name.
class VELUN_EXPORT ObjectLoader : public ResourceLoader {
public:
    ~ObjectLoader() override;

    // Whether this loader reads the file the info names (usually by its type).
    virtual bool canLoad(NameMapper::ResourceInfo const& info) = 0;
    // The factory for the file, or null after logging the cause on the loader's channel.
    virtual Dorvan::SharedPtr<ObjectFactory> load(NameMapper::ResourceInfo const& info) = 0;
};

}  // namespace Velun
