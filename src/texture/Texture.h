#pragma once

#include <cstdint>
#include <vector>

#include "core/ResourceContainer.h"
#include "foundation/SharedPtr.h"
#include "scene/Color.h"
#include "velun_export.h"

namespace Velun {

class TextureSource;

// How pixels are used: filters, wrap modes, mipmapping and the texture environment mode,
// over one or more TextureSources. A render context hangs its texture object on it
// through ResourceContainer and loads it again when hasChanged says so. A texture is a
// unique object with its own id: it cannot be copied; share it through SharedPtr.
class VELUN_EXPORT Texture : public ResourceContainer {
public:
    enum TextureType { Type1D = 0, Type2D = 1, Type3D = 2, TypeCubeMap = 3 };

    // Mag filters other than Nearest and Linear are stored as Linear; as min filter,
    // Bilinear is stored as Linear and Trilinear as MipMap with linear mipmap filters.
    enum TexFilter { Nearest = 0, Linear = 1, MipMap = 2, Bilinear = 3, Trilinear = 4 };

    enum TexWrap { Clamp = 0, Repeat = 1, ClampToEdge = 2, ClampToBorder = 3, MirroredRepeat = 4 };

    enum TexMode {
        Modulate = 0,
        Replace = 1,
        Blend = 2,
        Add = 3,
        Decal = 4,
        Inherit = 5,
        PassPrevious = 6,
        ModulateColor = 7,
        InterpolateByTexture = 8,
        InterpolateByVertexAlpha = 9,
        InterpolateByNextAlpha = 10,
        InterpolateByTextureAlpha = 11,
        ModulateConstant = 12
    };

    ~Texture() override;

    virtual void setTexMode(TexMode mode);
    virtual void setBorderColor(const Color& color);
    virtual void setMagFilter(TexFilter filter);
    virtual void setMinFilter(TexFilter filter);
    // Each of the two is stored as Nearest when it is Nearest, as Linear otherwise.
    virtual void setMipMapFilter(TexFilter chooseFilter, TexFilter filter);
    virtual void setAllFilters(TexFilter filter);
    // Ignored when `axis` or `index` is out of range.
    virtual void setWrapMode(TexWrap mode, unsigned int axis, unsigned int index);
    virtual void setAllWrapModes(TexWrap mode);
    virtual void setGenerateMipMaps(bool generate);
    virtual void setMipMapLevels(unsigned int minLevel, unsigned int maxLevel);
    virtual void setConstantColor(const Color& color);

    // Unique number of this texture object, from TextureManager::createTextureId.
    virtual unsigned int getTextureId() const;
    virtual unsigned int getTexCount() const;
    // Number of texture coordinate axes (2 for a 2D texture).
    virtual unsigned int getChannels() const;
    virtual TextureType getTextureType() const = 0;
    // True when the texture's sources were replaced at or after `stamp`.
    virtual bool hasChanged(std::int64_t stamp) const = 0;
    virtual TexMode getTexMode() const;
    virtual const Color& getBorderColor() const;
    virtual Color getConstantColor() const;
    // Repeat when `axis` or `index` is out of range.
    virtual TexWrap getWrapMode(unsigned int axis, unsigned int index) const;
    virtual TexFilter getMagFilter() const;
    virtual TexFilter getMinFilter() const;
    virtual TexFilter getMipMapChooseFilter() const;
    virtual TexFilter getMipMapFilter() const;
    virtual bool doGenerateMipMaps() const;
    virtual unsigned int getMinMipMapLevel() const;
    virtual unsigned int getMaxMipMapLevel() const;
    virtual Dorvan::SharedPtr<TextureSource> getTextureSource(unsigned int index,
                                                              unsigned int level) const = 0;

    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

protected:
    // `channels` is the number of coordinate axes, `texCount` the number of images.
    Texture(unsigned int channels, unsigned int texCount);

private:
    unsigned int mTextureId;
    unsigned int mChannels;
    unsigned int mTexCount;
    TexMode mTexMode;
    Color mBorderColor;
    Color mConstantColor;
    TexFilter mMagFilter;
    TexFilter mMinFilter;
    TexFilter mMipMapChooseFilter;
    TexFilter mMipMapFilter;
    bool mGenerateMipMaps;
    unsigned int mMinMipMapLevel;
    unsigned int mMaxMipMapLevel;
    // Entry of (axis, index) at index * channels + axis.
    std::vector<TexWrap> mWrapModes;
};

}  // namespace Velun
