#include "scene/RenderSettings.h"

namespace Velun {

RenderSettings::RenderSettings()
    : mShadingMode(ShadeSmooth), mUseFog(false), mUseLights(true), mUseTextures(true), mMinLOD(0),
      mMaxLOD(10000) {}

RenderSettings::~RenderSettings() {}

}  // namespace Velun
