#pragma once

#include <string>

#include <IL/il.h>

#include "texture/TextureSourceLoader.h"
#include "velun_export.h"

namespace Velun {

// Reads image files through DevIL: PNG, JPEG, TGA, BMP, DDS and the other formats the
// library knows, chosen by the file's extension. Images arrive with row 0 at the top
// whatever the file's own row order; palette images are expanded to RGB or RGBA and
// luminance-alpha or alpha images to RGBA. Everything else keeps the file's channel
// order (TGA and BMP give Bgr / Bgra) and component type (16-bit PNGs give
// UnsignedShort). Failures log "Error opening <path>: <DevIL's text>" on the channel
// "loader.devil.textureloader", one line per pending DevIL error.
class VELUN_EXPORT DevILTextureSourceLoader : public TextureSourceLoader {
public:
    DevILTextureSourceLoader();
    // Shuts DevIL down if this loader started it.
    ~DevILTextureSourceLoader() override;

    bool isInitialized() const override;
    // Starts DevIL and ILU and sets the upper-left origin.
    bool initialize() override;
    // Shuts DevIL down; every image it holds is gone.
    bool shutdown() override;

    // True when the resource's file type is an image format DevIL reads (case ignored).
    bool canLoad(const NameMapper::ResourceInfo& resource, const TextureInfo& info) override;
    bool canLoad(const NameMapper::ResourceInfo& resource) override;
    bool canConvert(const TextureInfo& info, bool flag) override;
    // The image converted to the colour format and component type of `info`, and scaled
    // to its width and height; a format of None, a type of None or a size of 0 keeps the
    // file's own. Null when the file fails or DevIL cannot make the description.
    Dorvan::SharedPtr<TextureSource> load(const NameMapper::ResourceInfo& resource,
                                          const TextureInfo& info) override;
    Dorvan::SharedPtr<TextureSource> load(const NameMapper::ResourceInfo& resource) override;
    Dorvan::SharedPtr<TextureSource> convert(Dorvan::SharedPtr<TextureSource> source, const TextureInfo& info,
                                             bool flag) override;

    // The DevIL file type of an extension (without the dot), IL_TYPE_UNKNOWN when DevIL
    // reads no such files.
    static ILenum typeOfExtension(const std::string& extension);

private:
    ILuint loadImage(const NameMapper::ResourceInfo& resource);
    void logErrors(const NameMapper::ResourceInfo& resource, ILenum code);

    bool mInitialized;
};

}  // namespace Velun
