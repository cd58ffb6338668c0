#pragma once

#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "scene/Color.h"
#include "scene/RenderSettings.h"
#include "texture/Texture.h"
#include "velun_export.h"

namespace Velun {

// How a surface looks: flags, colours, shininess, blending, an optional RenderSettings
// override and a table of textures by logical index. A material does nothing by itself:
// the renderer reads all of it on every draw, so a change shows with the next frame.
// Which table entry reaches which texture unit is decided by the vertex data's texture
// indices; each texture carries its own environment mode for layered multi-texturing.
// Materials are shared through SharedPtr; a copy shares its textures and settings.
class VELUN_EXPORT Material {
public:
    // Blend function chosen when blending is on.
    enum BlendMode {
        AlphaBlend = 0,          // source alpha, one minus source alpha
        ConstantColorBlend = 1,  // the blend colour, one minus the blend colour
        ConstantAlphaBlend = 2   // the blend colour's alpha, one minus that alpha
    };

    Material();
    virtual ~Material();

    bool useDefaultVertexColor() const { return mUseDefaultVertexColor; }
    void setUseDefaultVertexColor(bool use) { mUseDefaultVertexColor = use; }
    // Vertex colours drive the lit material colours.
    bool useMaterialColor() const { return mUseMaterialColor; }
    void setUseMaterialColor(bool use) { mUseMaterialColor = use; }
    // On by default: fragments of alpha at or below the test value are dropped.
    bool useAlphaTest() const { return mUseAlphaTest; }
    void setUseAlphaTest(bool use) { mUseAlphaTest = use; }
    // A blended material is drawn after the opaque ones, far to near.
    bool useBlending() const { return mUseBlending; }
    void setUseBlending(bool use) { mUseBlending = use; }
    bool usePointSprites() const { return mUsePointSprites; }
    void setUsePointSprites(bool use) { mUsePointSprites = use; }

    float getAlphaTestValue() const { return mAlphaTestValue; }
    void setAlphaTestValue(float value) { mAlphaTestValue = value; }
    // Point size in pixels for sprites.
    float getSpriteSize() const { return mSpriteSize; }
    void setSpriteSize(float size) { mSpriteSize = size; }
    BlendMode getBlendMode() const { return mBlendMode; }
    void setBlendMode(BlendMode mode) { mBlendMode = mode; }

    // The colour of vertices that bring none, when useDefaultVertexColor is set.
    Color getDefaultVertexColor() const { return mDefaultVertexColor; }
    void setDefaultVertexColor(Color color) { mDefaultVertexColor = color; }
    // Lit colours; the defaults are OpenGL's own (ambient 0.2, diffuse 0.8, no specular).
    Color getAmbientMaterialColor() const { return mAmbientMaterialColor; }
    void setAmbientMaterialColor(Color color) { mAmbientMaterialColor = color; }
    Color getDiffuseMaterialColor() const { return mDiffuseMaterialColor; }
    void setDiffuseMaterialColor(Color color) { mDiffuseMaterialColor = color; }
    Color getSpecularMaterialColor() const { return mSpecularMaterialColor; }
    void setSpecularMaterialColor(Color color) { mSpecularMaterialColor = color; }
    // Specular exponent from 0 (the default, broad) to 128 (tight); other values are
    // clamped into that range.
    float getShininess() const { return mShininess; }
    void setShininess(float shininess);
    // The constant colour of ConstantColorBlend and ConstantAlphaBlend.
    Color getBlendColor() const { return mBlendColor; }
    void setBlendColor(Color color) { mBlendColor = color; }

    // Overrides the pass's depth test, shading and lighting while this material is
    // used; null leaves the pass's settings in force.
    Dorvan::SharedPtr<RenderSettings> getRenderSettings() const { return mRenderSettings; }
    void setRenderSettings(Dorvan::SharedPtr<RenderSettings> settings) { mRenderSettings = settings; }

    // The texture at a logical index, or null; the lookup adds no entry.
    Dorvan::SharedPtr<Texture> getTexture(unsigned int index) const;
    // Replaces any texture at that index.
    void setTexture(unsigned int index, Dorvan::SharedPtr<Texture> texture);
    // False if there was no texture at that index.
    bool removeTexture(unsigned int index);
    // The whole table in index order.
    Dorvan::LinkedMap<unsigned int, Dorvan::SharedPtr<Texture>> const& getTextures() const {
        return mTextures;
    }
    unsigned int getTextureCount() const { return mTextures.size(); }

private:
    bool mUseDefaultVertexColor;
    bool mUseMaterialColor;
    bool mUseAlphaTest;
    bool mUseBlending;
    bool mUsePointSprites;
    float mAlphaTestValue;
    float mSpriteSize;
    BlendMode mBlendMode;
    Color mDefaultVertexColor;
    Color mAmbientMaterialColor;
    Color mDiffuseMaterialColor;
    Color mSpecularMaterialColor;
    float mShininess;
    Color mBlendColor;
    Dorvan::SharedPtr<RenderSettings> mRenderSettings;
    // Mutable for the lookups of the const getter; it never inserts.
    mutable Dorvan::LinkedMap<unsigned int, Dorvan::SharedPtr<Texture>> mTextures;
};

}  // namespace Velun
