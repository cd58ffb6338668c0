#pragma once

#include <cstdint>

#include "foundation/SharedPtr.h"
#include "texture/TextureSource.h"
#include "velun_export.h"

namespace Velun {

// An RGBA byte image made in the engine: a solid colour, a composition of the colours of
// one source with the alpha of another, or a canvas that rectangles of other sources are
// copied into. It takes a snapshot: it keeps no reference to the sources it was composed
// from. copyRect stamps it, so render contexts load it again. Not copyable.
class VELUN_EXPORT TextureProxy : public TextureSource {
public:
    // `width` x `height` pixels of one colour.
    TextureProxy(unsigned int width, unsigned int height, const Color& color);
    // The size and colours of `source`, with each colour component scaled and biased
    // (value * scale + bias, clamped to [0, 1]); the alpha is channel `alphaChannel`
    // (0 red, 1 green, 2 blue, 3 alpha, anything else 0) of `alphaSource`, sampled at
    // the nearest pixel when its size differs, or the source's own alpha without one.
    // A null source gives an empty proxy with no pixels.
    TextureProxy(Dorvan::SharedPtr<TextureSource> source, Dorvan::SharedPtr<TextureSource> alphaSource,
                 float scale, float bias, unsigned int alphaChannel);
    ~TextureProxy() override;

    const TextureInfo& getTextureInfo() const override;
    // True when copyRect ran at or after `stamp`; always true for stamp 0.
    bool hasChanged(std::int64_t stamp) const override;
    const void* getTextureData() const override;
    const void* getPixel(unsigned int x, unsigned int y, unsigned int z) const override;
    bool copyData(unsigned int x, unsigned int y, unsigned int z, unsigned int width, unsigned int height,
                  unsigned int depth, void* target) const override;

    // Copies a rectangle of the first slice of an Rgba byte source to (destX, destY),
    // clipped to both images, and stamps the proxy. A source of another format copies no
    // pixel but still stamps. False for a null source or when nothing of the rectangle
    // lies inside both images; then the stamp stays.
    bool copyRect(Dorvan::SharedPtr<TextureSource> source, unsigned int destX, unsigned int destY,
                  unsigned int destZ, unsigned int sourceX, unsigned int sourceY, unsigned int sourceZ,
                  unsigned int width, unsigned int height, unsigned int depth);

    TextureProxy(const TextureProxy&) = delete;
    TextureProxy& operator=(const TextureProxy&) = delete;

protected:
    // The one place where a float becomes a byte: (value * scale + bias) * 255, clamped
    // to [0, 255] and truncated, so 0.5 gives 127.
    virtual unsigned char getPixelValue(float value, float scale, float bias) const;

    void createData(unsigned int width, unsigned int height, const Color& color);
    void updateData(Dorvan::SharedPtr<TextureSource> source, Dorvan::SharedPtr<TextureSource> alphaSource,
                    float scale, float bias, unsigned int alphaChannel);

private:
    bool composeBytes(const TextureSource& source, const TextureSource* alphaSource, float scale, float bias,
                      unsigned int alphaChannel);
    // The byte tables of a composition with `scale` and `bias`: values of colour and of
    // alpha bytes, then constant colour 1, alpha 1 and alpha 0.
    void fillValueTables(float scale, float bias, unsigned char (*values)[256]) const;
    void composePixels(const TextureSource& source, const TextureSource* alphaSource, float scale, float bias,
                       unsigned int alphaChannel);

    TextureInfo mInfo;
    std::int64_t mModified;
    unsigned char* mData;
};

}  // namespace Velun
