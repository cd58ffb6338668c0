#include "render/Viewport.h"

namespace Velun {

Viewport::Viewport(float x, float y, float width, float height)
    : mEnabled(true), mRelative(true), mPosX(0), mPosY(0), mWidth(0), mHeight(0), mRelPosX(x), mRelPosY(y),
      mRelWidth(width), mRelHeight(height) {}

Viewport::Viewport(int x, int y, int width, int height)
    : mEnabled(true), mRelative(false), mPosX(x), mPosY(y), mWidth(width), mHeight(height), mRelPosX(0.0f),
      mRelPosY(0.0f), mRelWidth(0.0f), mRelHeight(0.0f) {}

Viewport::~Viewport() {}

void Viewport::setRelativeLayout(float x, float y, float width, float height) {
    mRelPosX = x;
    mRelPosY = y;
    mRelWidth = width;
    mRelHeight = height;
    mRelative = true;
}

void Viewport::setAbsoluteLayout(int x, int y, int width, int height) {
    mPosX = x;
    mPosY = y;
    mWidth = width;
    mHeight = height;
    mRelative = false;
}

int Viewport::getPosX(int surfaceWidth) const {
    return mRelative ? static_cast<int>(static_cast<float>(surfaceWidth) * mRelPosX) : mPosX;
}

int Viewport::getPosY(int surfaceHeight) const {
    return mRelative ? static_cast<int>(static_cast<float>(surfaceHeight) * mRelPosY) : mPosY;
}

int Viewport::getWidth(int surfaceWidth) const {
    return mRelative ? static_cast<int>(static_cast<float>(surfaceWidth) * mRelWidth) : mWidth;
}

int Viewport::getHeight(int surfaceHeight) const {
    return mRelative ? static_cast<int>(static_cast<float>(surfaceHeight) * mRelHeight) : mHeight;
}

float Viewport::getAspect(int surfaceWidth, int surfaceHeight) const {
    int height = getHeight(surfaceHeight);
    if (height <= 0)
        return 0.0f;
    return static_cast<float>(getWidth(surfaceWidth)) / static_cast<float>(height);
}

void Viewport::attachCamera(Dorvan::SharedPtr<Camera> camera) { mCamera = camera; }

Dorvan::SharedPtr<Camera> Viewport::detachCamera() {
    Dorvan::SharedPtr<Camera> camera = mCamera;
    mCamera.release();
    return camera;
}

}  // namespace Velun
