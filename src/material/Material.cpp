#include "material/Material.h"

namespace Velun {

Material::Material()
    : mUseDefaultVertexColor(false), mUseMaterialColor(false), mUseAlphaTest(true), mUseBlending(false),
      mUsePointSprites(false), mAlphaTestValue(0.5f), mSpriteSize(10.0f), mBlendMode(AlphaBlend),
      mDefaultVertexColor(0.0f, 0.0f, 0.0f, 1.0f), mAmbientMaterialColor(0.2f, 0.2f, 0.2f, 1.0f),
      mDiffuseMaterialColor(0.8f, 0.8f, 0.8f, 1.0f), mSpecularMaterialColor(0.0f, 0.0f, 0.0f, 1.0f),
      mShininess(0.0f), mBlendColor(0.0f, 0.0f, 0.0f, 1.0f) {}

Material::~Material() {}

void Material::setShininess(float shininess) {
    // OpenGL refuses exponents outside [0, 128] with an error and keeps the old one.
    if (!(shininess >= 0.0f))
        shininess = 0.0f;
    else if (shininess > 128.0f)
        shininess = 128.0f;
    mShininess = shininess;
}

Dorvan::SharedPtr<Texture> Material::getTexture(unsigned int index) const {
    if (!mTextures.containsKey(index))
        return Dorvan::SharedPtr<Texture>();
    return mTextures.get(index);
}

void Material::setTexture(unsigned int index, Dorvan::SharedPtr<Texture> texture) {
    mTextures.put(index, texture);
}

bool Material::removeTexture(unsigned int index) {
    if (!mTextures.containsKey(index))
        return false;
    mTextures.remove(index);
    return true;
}

}  // namespace Velun
