#include "texture/TextureManager.h"

namespace Velun {

namespace {

// The lookup shared by the four texture kinds: cache, then the first loader that
// accepts. The result is cached even when empty, so a failed name is not retried.
template <class T, class CanLoad, class Load>
Dorvan::SharedPtr<T> findOrLoad(const std::string& name,
                                Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<T>>& cache,
                                const Dorvan::SharedPtr<NameMapper>& mapper,
                                const Dorvan::Vector<TextureLoader*>& loaders, CanLoad canLoad, Load load) {
    if (cache.containsKey(name))
        return cache.get(name);
    if (!mapper)
        return Dorvan::SharedPtr<T>();
    NameMapper::ResourceInfo resource = mapper->getResourceInfo(name);
    for (unsigned int i = 0; i < loaders.size(); ++i) {
        TextureLoader* loader = loaders.get(i);
        if ((loader->*canLoad)(resource)) {
            Dorvan::SharedPtr<T> result = (loader->*load)(resource);
            cache.put(name, result);
            return result;
        }
    }
    return Dorvan::SharedPtr<T>();
}

}  // namespace

TextureManager::TextureManager() : mLastTextureId(0) {}

TextureManager::~TextureManager() {}

unsigned int TextureManager::registerTextureLoader(TextureLoader& loader) {
    if (!loader.isInitialized())
        loader.initialize();
    return static_cast<unsigned int>(mTextureLoaders.add(&loader));
}

unsigned int TextureManager::registerTextureSourceLoader(TextureSourceLoader& loader) {
    if (!loader.isInitialized())
        loader.initialize();
    return static_cast<unsigned int>(mTextureSourceLoaders.add(&loader));
}

bool TextureManager::unregisterTextureSourceLoader(TextureSourceLoader& loader) {
    if (!mTextureSourceLoaders.contains(&loader))
        return false;
    mTextureSourceLoaders.remove(&loader);
    return true;
}

void TextureManager::setTextureNameMapper(Dorvan::SharedPtr<NameMapper> mapper) {
    mTextureNameMapper = mapper;
}

Dorvan::SharedPtr<NameMapper> TextureManager::getTextureNameMapper() const { return mTextureNameMapper; }

void TextureManager::setTextureSourceNameMapper(Dorvan::SharedPtr<NameMapper> mapper) {
    mTextureSourceNameMapper = mapper;
}

Dorvan::SharedPtr<NameMapper> TextureManager::getTextureSourceNameMapper() const {
    return mTextureSourceNameMapper;
}

Dorvan::SharedPtr<Texture1D> TextureManager::getTexture1D(const std::string& name) {
    return findOrLoad(name, mTextures1D, mTextureNameMapper, mTextureLoaders, &TextureLoader::canLoad1D,
                      &TextureLoader::loadTexture1D);
}

Dorvan::SharedPtr<Texture2D> TextureManager::getTexture2D(const std::string& name) {
    return findOrLoad(name, mTextures2D, mTextureNameMapper, mTextureLoaders, &TextureLoader::canLoad2D,
                      &TextureLoader::loadTexture2D);
}

Dorvan::SharedPtr<Texture3D> TextureManager::getTexture3D(const std::string& name) {
    return findOrLoad(name, mTextures3D, mTextureNameMapper, mTextureLoaders, &TextureLoader::canLoad3D,
                      &TextureLoader::loadTexture3D);
}

Dorvan::SharedPtr<CubeMap> TextureManager::getCubeMap(const std::string& name) {
    return findOrLoad(name, mCubeMaps, mTextureNameMapper, mTextureLoaders, &TextureLoader::canLoadCubeMap,
                      &TextureLoader::loadCubeMap);
}

Dorvan::SharedPtr<TextureSource> TextureManager::getTextureSource(const std::string& name) {
    if (mTextureSources.containsKey(name))
        return mTextureSources.get(name);
    if (!mTextureSourceNameMapper)
        return Dorvan::SharedPtr<TextureSource>();
    NameMapper::ResourceInfo resource = mTextureSourceNameMapper->getResourceInfo(name);
    for (unsigned int i = 0; i < mTextureSourceLoaders.size(); ++i) {
        TextureSourceLoader* loader = mTextureSourceLoaders.get(i);
        if (loader->canLoad(resource)) {
            Dorvan::SharedPtr<TextureSource> result = loader->load(resource);
            mTextureSources.put(name, result);
            return result;
        }
    }
    return Dorvan::SharedPtr<TextureSource>();
}

Dorvan::SharedPtr<TextureSource> TextureManager::getTextureSource(const std::string& name,
                                                                  const TextureInfo& info) {
    if (!mTextureSourceNameMapper)
        return Dorvan::SharedPtr<TextureSource>();
    NameMapper::ResourceInfo resource = mTextureSourceNameMapper->getResourceInfo(name);
    for (unsigned int i = 0; i < mTextureSourceLoaders.size(); ++i) {
        TextureSourceLoader* loader = mTextureSourceLoaders.get(i);
        if (loader->canLoad(resource, info))
            return loader->load(resource, info);
    }
    return Dorvan::SharedPtr<TextureSource>();
}

Dorvan::SharedPtr<TextureSource> TextureManager::getTextureProxy(Dorvan::SharedPtr<TextureSource> source,
                                                                 const TextureInfo& info, bool flag) const {
    for (unsigned int i = 0; i < mTextureSourceLoaders.size(); ++i) {
        TextureSourceLoader* loader = mTextureSourceLoaders.get(i);
        if (loader->canConvert(info, flag))
            return loader->convert(source, info, flag);
    }
    return Dorvan::SharedPtr<TextureSource>();
}

void TextureManager::registerTexture1D(const std::string& name, Dorvan::SharedPtr<Texture1D> texture) {
    mTextures1D.put(name, texture);
}

void TextureManager::registerTexture2D(const std::string& name, Dorvan::SharedPtr<Texture2D> texture) {
    mTextures2D.put(name, texture);
}

void TextureManager::registerTexture3D(const std::string& name, Dorvan::SharedPtr<Texture3D> texture) {
    mTextures3D.put(name, texture);
}

void TextureManager::registerCubeMap(const std::string& name, Dorvan::SharedPtr<CubeMap> texture) {
    mCubeMaps.put(name, texture);
}

void TextureManager::registerTextureSource(const std::string& name, Dorvan::SharedPtr<TextureSource> source) {
    mTextureSources.put(name, source);
}

unsigned int TextureManager::createTextureId() { return ++mLastTextureId; }

void TextureManager::returnTextureId(unsigned int) {}

}  // namespace Velun
