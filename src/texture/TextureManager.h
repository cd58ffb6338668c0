#pragma once

#include <string>

#include "core/NameMapper.h"
#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "texture/CubeMap.h"
#include "texture/Texture1D.h"
#include "texture/Texture2D.h"
#include "texture/Texture3D.h"
#include "texture/TextureInfo.h"
#include "texture/TextureLoader.h"
#include "texture/TextureSource.h"
#include "texture/TextureSourceLoader.h"
#include "velun_export.h"

namespace Velun {

// Turns names into textures and texture sources, through a name mapper and the
// registered loaders, and caches the results by name for the life of the manager: two
// requests for one name share one object. An empty pointer is the only form of failure.
// A name whose load failed stays cached as empty and is not tried again until a
// register... call replaces it. Loaders are not owned and are asked in registration
// order; the first that accepts a name decides.
//
// The engine brings texture source loaders only (images), so getTexture2D finds nothing
// unless a TextureLoader is registered or the texture was registered by name: build
// Texture2D(getTextureSource(name)) and registerTexture2D it.
class VELUN_EXPORT TextureManager {
public:
    TextureManager();
    virtual ~TextureManager();

    // Initialises the loader if it is not yet, appends it and returns its position.
    unsigned int registerTextureLoader(TextureLoader& loader);
    unsigned int registerTextureSourceLoader(TextureSourceLoader& loader);
    // Removes the loader from the list; false if it was not registered. For plug-ins
    // that delete their loaders before the manager ends.
    bool unregisterTextureSourceLoader(TextureSourceLoader& loader);

    void setTextureNameMapper(Dorvan::SharedPtr<NameMapper> mapper);
    Dorvan::SharedPtr<NameMapper> getTextureNameMapper() const;
    void setTextureSourceNameMapper(Dorvan::SharedPtr<NameMapper> mapper);
    Dorvan::SharedPtr<NameMapper> getTextureSourceNameMapper() const;

    Dorvan::SharedPtr<Texture1D> getTexture1D(const std::string& name);
    Dorvan::SharedPtr<Texture2D> getTexture2D(const std::string& name);
    Dorvan::SharedPtr<Texture3D> getTexture3D(const std::string& name);
    Dorvan::SharedPtr<CubeMap> getCubeMap(const std::string& name);

    // The cached pixels of a name, loaded on first request.
    Dorvan::SharedPtr<TextureSource> getTextureSource(const std::string& name);
    // The pixels of a name in the description `info`; not cached: each call loads anew.
    Dorvan::SharedPtr<TextureSource> getTextureSource(const std::string& name, const TextureInfo& info);
    // Pixels of `source` converted by the first loader that can convert into `info`.
    Dorvan::SharedPtr<TextureSource> getTextureProxy(Dorvan::SharedPtr<TextureSource> source,
                                                     const TextureInfo& info, bool flag) const;

    // Put a resource in the cache under a name, replacing what was there.
    void registerTexture1D(const std::string& name, Dorvan::SharedPtr<Texture1D> texture);
    void registerTexture2D(const std::string& name, Dorvan::SharedPtr<Texture2D> texture);
    void registerTexture3D(const std::string& name, Dorvan::SharedPtr<Texture3D> texture);
    void registerCubeMap(const std::string& name, Dorvan::SharedPtr<CubeMap> texture);
    void registerTextureSource(const std::string& name, Dorvan::SharedPtr<TextureSource> source);

    // Texture ids: the first is 1; ids are not reused.
    unsigned int createTextureId();
    void returnTextureId(unsigned int id);

    unsigned int getTextureLoaderCount() const { return mTextureLoaders.size(); }
    unsigned int getTextureSourceLoaderCount() const { return mTextureSourceLoaders.size(); }

    TextureManager(const TextureManager&) = delete;
    TextureManager& operator=(const TextureManager&) = delete;

private:
    Dorvan::SharedPtr<NameMapper> mTextureNameMapper;
    Dorvan::SharedPtr<NameMapper> mTextureSourceNameMapper;
    Dorvan::Vector<TextureLoader*> mTextureLoaders;
    Dorvan::Vector<TextureSourceLoader*> mTextureSourceLoaders;
    Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<TextureSource>> mTextureSources;
    Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<Texture1D>> mTextures1D;
    Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<Texture2D>> mTextures2D;
    Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<Texture3D>> mTextures3D;
    Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<CubeMap>> mCubeMaps;
    unsigned int mLastTextureId;
};

}  // namespace Velun
