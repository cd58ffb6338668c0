#include "scene/Light.h"

namespace Velun {

Light::Light() : Leaf(TypeLight) { initialize(); }

Light::Light(std::string const& name) : Leaf(TypeLight, name) { initialize(); }

Light::Light(std::string const& name, std::string const& uniqueName) : Leaf(TypeLight, name, uniqueName) {
    initialize();
}

Light::~Light() {}

void Light::initialize() {
    mLightType = PointLight;
    mEnabled = true;
    mAmbientColor = Color(0.2f, 0.2f, 0.2f, 1.0f);
    mDiffuseColor = Color(1.0f, 1.0f, 1.0f, 1.0f);
    mSpecularColor = Color(1.0f, 1.0f, 1.0f, 1.0f);
    mSpotCutoff = 45.0f;
    mSpotExponent = 1.0f;
    mConstantAttenuation = 1.0f;
    mLinearAttenuation = 0.02f;
    mQuadraticAttenuation = 0.0f;
    mBoundingVolume.setInfinite();
}

BoundingVolume const* Light::getBoundingVolume() const { return &mBoundingVolume; }

}  // namespace Velun
