#pragma once

#include "core/NameMapper.h"
#include "core/ResourceLoader.h"
#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

class TextureInfo;
class TextureSource;

// Makes pixels from mapped names (an image file reader), or converts pixels to another
// description; register it with TextureManager. The manager asks canLoad / canConvert in
// registration order and lets the first that accepts do the work. A loader that accepts
// and then fails returns an empty pointer and logs its own error line. Open files through
// toNativePath(resource.mFileName).
class VELUN_EXPORT TextureSourceLoader : public ResourceLoader {
public:
    ~TextureSourceLoader() override;

    // Whether the loader can give the named pixels in the description `info`.
    virtual bool canLoad(const NameMapper::ResourceInfo& resource, const TextureInfo& info) = 0;
    virtual bool canLoad(const NameMapper::ResourceInfo& resource) = 0;
    // Whether the loader can convert pixels into the description `info`; the flag is the
    // caller's and passes through unchanged.
    virtual bool canConvert(const TextureInfo& info, bool flag) = 0;
    virtual Dorvan::SharedPtr<TextureSource> load(const NameMapper::ResourceInfo& resource,
                                                  const TextureInfo& info) = 0;
    virtual Dorvan::SharedPtr<TextureSource> load(const NameMapper::ResourceInfo& resource) = 0;
    virtual Dorvan::SharedPtr<TextureSource> convert(Dorvan::SharedPtr<TextureSource> source,
                                                     const TextureInfo& info, bool flag) = 0;
};

}  // namespace Velun
