#pragma once

#include "velun_export.h"

namespace Velun {

// Switches for how a pass draws: polygon and shade mode, fog, lights, textures and
// a level-of-detail range. Shared by camera settings and materials; a pass without
// settings uses a default-constructed one.
class VELUN_EXPORT RenderSettings {
public:
    // Read by the GL side both as polygon mode and as shade model.
    enum ShadingMode {
        ShadePoints = 0,     // points, flat
        ShadeWireframe = 1,  // lines, flat
        ShadeFlat = 2,       // filled, flat
        ShadeSmooth = 3      // filled, smooth
    };

    RenderSettings();
    virtual ~RenderSettings();

    ShadingMode getShadingMode() const { return mShadingMode; }
    void setShadingMode(ShadingMode mode) { mShadingMode = mode; }
    bool useFog() const { return mUseFog; }
    void setUseFog(bool use) { mUseFog = use; }
    bool useLights() const { return mUseLights; }
    void setUseLights(bool use) { mUseLights = use; }
    bool useTextures() const { return mUseTextures; }
    void setUseTextures(bool use) { mUseTextures = use; }
    int getMinLOD() const { return mMinLOD; }
    void setMinLOD(int lod) { mMinLOD = lod; }
    int getMaxLOD() const { return mMaxLOD; }
    void setMaxLOD(int lod) { mMaxLOD = lod; }

private:
    ShadingMode mShadingMode;
    bool mUseFog;
    bool mUseLights;
    bool mUseTextures;
    int mMinLOD;
    int mMaxLOD;
};

}  // namespace Velun
