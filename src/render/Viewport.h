#pragma once

#include "foundation/SharedPtr.h"
#include "scene/Camera.h"
#include "velun_export.h"

namespace Velun {

// A rectangle of a surface with the camera that is drawn into it. The rectangle is
// given either in pixels (absolute) or as fractions of the surface (relative); the
// relative one is computed against the surface size of each call. Coordinates are the
// surface's own: for OpenGL the origin is the lower left corner.
class VELUN_EXPORT Viewport {
public:
    // Relative layout, fractions of the surface, normally 0 to 1.
    Viewport(float x, float y, float width, float height);
    // Absolute layout in pixels.
    Viewport(int x, int y, int width, int height);
    virtual ~Viewport();

    // Store their rectangle and switch to it; the other rectangle stays stored.
    void setRelativeLayout(float x, float y, float width, float height);
    void setAbsoluteLayout(int x, int y, int width, int height);
    bool isRelative() const { return mRelative; }

    // Pixels: the stored ones, or int(surface * fraction), truncated toward zero.
    int getPosX(int surfaceWidth) const;
    int getPosY(int surfaceHeight) const;
    int getWidth(int surfaceWidth) const;
    int getHeight(int surfaceHeight) const;
    // Width over height of the rectangle on this surface; 0 when it has no height.
    float getAspect(int surfaceWidth, int surfaceHeight) const;

    // A disabled viewport is not drawn.
    void setEnabled(bool enabled) { mEnabled = enabled; }
    bool isEnabled() const { return mEnabled; }

    // Replaces the camera. A viewport without a camera is not drawn.
    void attachCamera(Dorvan::SharedPtr<Camera> camera);
    Dorvan::SharedPtr<Camera> getCamera() const { return mCamera; }
    // Clears the camera and returns the one that was there (null if none).
    Dorvan::SharedPtr<Camera> detachCamera();

private:
    bool mEnabled;
    bool mRelative;
    int mPosX;
    int mPosY;
    int mWidth;
    int mHeight;
    float mRelPosX;
    float mRelPosY;
    float mRelWidth;
    float mRelHeight;
    Dorvan::SharedPtr<Camera> mCamera;
};

}  // namespace Velun
