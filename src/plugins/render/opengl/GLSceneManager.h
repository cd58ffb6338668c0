#pragma once

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "scene/Matrix.h"
#include "scene/RenderSettings.h"
#include "velun_export.h"

namespace Velun {

class GLRenderContext;
class Light;

// What belongs to one view pass as a whole, as GL state: the pass's render settings,
// its lights and its fog, and the modelview matrix of each drawable. A material's own
// render settings override the pass's for as long as such materials follow each other;
// the first material without settings brings the pass's settings back. Lives for one
// pass.
class VELUN_EXPORT GLSceneManager {
public:
    // Null settings mean the defaults of RenderSettings.
    GLSceneManager(GLRenderContext* context, Dorvan::SharedPtr<RenderSettings> settings);
    virtual ~GLSceneManager();

    // Lights in traversal order; at most eight reach GL, a ninth replaces the first.
    void addLight(Light* light);
    unsigned int getLightCount() const;
    Dorvan::SharedPtr<RenderSettings> getRenderSettings() const { return mSettings; }

    void loadMatrix(Dorvan::Matrix<float, 4> const& m);
    void multMatrix(Dorvan::Matrix<float, 4> const& m);
    // Replaces the top of the modelview stack with the one below it times `m`: the
    // caller has pushed the view matrix once.
    void setWorldTransformation(Dorvan::Matrix<float, 4> const& m);
    // The view matrix the caller pushed: each world transformation is then loaded as
    // one product, one GL call per drawable instead of three.
    void setViewMatrix(Dorvan::Matrix<float, 4> const& view);

    // Sets the pass's lights; GL lights beyond them are switched off.
    void setupLights();
    // Sets fog as the pass's settings say.
    void setupFog();
    // Null settings restore the pass's settings when `restoreIfNull` is set.
    void applyRenderSettings(Dorvan::SharedPtr<RenderSettings> settings, bool restoreIfNull);
    void restoreDefaultSettings();

    GLSceneManager(GLSceneManager const&) = delete;
    GLSceneManager& operator=(GLSceneManager const&) = delete;

private:
    bool mDefaultsApplied;
    GLRenderContext* mContext;
    Dorvan::Vector<Light*> mLights;
    Dorvan::SharedPtr<RenderSettings> mSettings;
    bool mViewKnown;
    Dorvan::Matrix<float, 4> mView;
};

}  // namespace Velun
