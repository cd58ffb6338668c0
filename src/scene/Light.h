#pragma once

#include <string>

#include "scene/BoundingBox.h"
#include "scene/Color.h"
#include "scene/Leaf.h"
#include "velun_export.h"

namespace Velun {

// A light source of the fixed-function model. Its volume is infinite, so a light is
// never culled and the groups above it are never culled either. The accessors are
// plain: they mark nothing as modified.
class VELUN_EXPORT Light : public Leaf {
public:
    enum LightType {
        Directional = 0,  // from the direction of the node's local +Z axis, infinitely far
        Spot = 1,         // at the node's origin, pointing along its local -Z axis
        PointLight = 2    // at the node's origin
    };

    Light();
    explicit Light(std::string const& name);
    Light(std::string const& name, std::string const& uniqueName);
    ~Light() override;

    BoundingVolume const* getBoundingVolume() const override;

    LightType getLightType() const { return mLightType; }
    void setLightType(LightType type) { mLightType = type; }
    bool isEnabled() const { return mEnabled; }
    void setEnabled(bool enabled) { mEnabled = enabled; }

    Color& getAmbientColor() { return mAmbientColor; }
    Color const& getAmbientColor() const { return mAmbientColor; }
    Color& getDiffuseColor() { return mDiffuseColor; }
    Color const& getDiffuseColor() const { return mDiffuseColor; }
    Color& getSpecularColor() { return mSpecularColor; }
    Color const& getSpecularColor() const { return mSpecularColor; }
    void setAmbientColor(Color const& color) { mAmbientColor = color; }
    void setDiffuseColor(Color const& color) { mDiffuseColor = color; }
    void setSpecularColor(Color const& color) { mSpecularColor = color; }

    // Degrees, for Spot lights.
    float getSpotCutoff() const { return mSpotCutoff; }
    void setSpotCutoff(float degrees) { mSpotCutoff = degrees; }
    float getSpotExponent() const { return mSpotExponent; }
    void setSpotExponent(float exponent) { mSpotExponent = exponent; }

    float getConstantAttenuation() const { return mConstantAttenuation; }
    void setConstantAttenuation(float value) { mConstantAttenuation = value; }
    float getLinearAttenuation() const { return mLinearAttenuation; }
    void setLinearAttenuation(float value) { mLinearAttenuation = value; }
    float getQuadraticAttenuation() const { return mQuadraticAttenuation; }
    void setQuadraticAttenuation(float value) { mQuadraticAttenuation = value; }

private:
    void initialize();

    LightType mLightType;
    bool mEnabled;
    Color mAmbientColor;
    Color mDiffuseColor;
    Color mSpecularColor;
    float mSpotCutoff;
    float mSpotExponent;
    float mConstantAttenuation;
    float mLinearAttenuation;
    float mQuadraticAttenuation;
    BoundingBox mBoundingVolume;
};

}  // namespace Velun
