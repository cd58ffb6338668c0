#pragma once

#include <string>

#include <IL/il.h>

#include "plugins/loader/devil/DdsTextureData.h"
#include "texture/TextureSourceLoader.h"
#include "velun_export.h"

namespace Velun {

// Reads PNG, JPEG (".jpg", ".jpeg"), TGA and BMP files through DevIL, and DDS files
// with the engine's own DdsFile, chosen by the file's extension; other types are left
// to other loaders. Images arrive with row 0 at the top whatever the file's own row
// order; palette images are expanded to RGB or RGBA and luminance-alpha or alpha images
// to RGBA. A DDS file arrives as a DdsTextureData holding its mipmap levels and cube
// faces, decoded to bytes (DXT blocks to Rgba). Everything else keeps the file's channel
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

    // True when the resource's file type is one the loader reads (case ignored).
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

    // The DevIL file type of an extension (without the dot, case ignored),
    // IL_TYPE_UNKNOWN for the types the loader does not read.
    static ILenum typeOfExtension(const std::string& extension);

private:
    ILuint loadImage(const NameMapper::ResourceInfo& resource);
    void logErrors(const NameMapper::ResourceInfo& resource, ILenum code);
    void logError(const NameMapper::ResourceInfo& resource, const std::string& error);
    Dorvan::SharedPtr<DdsTextureData> loadDds(const NameMapper::ResourceInfo& resource);
    // The first surface of a DDS file, handed to DevIL for conversion; 0 on failure.
    ILuint loadDdsImage(const NameMapper::ResourceInfo& resource);

    bool mInitialized;
};

}  // namespace Velun
