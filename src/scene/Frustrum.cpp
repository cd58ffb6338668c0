#include "scene/Frustrum.h"

#include <cmath>

namespace Velun {

namespace {
const double RadiansPerDegree = 0.017453292519943295;
}

Frustrum::Frustrum(Dorvan::Matrix<float, 4> const& view, CameraSettings::ProjectionMode mode,
                   CameraSettings::AspectMode aspectMode, double nearDistance, double farDistance, float fovX,
                   float fovY, float aspect)
    : mProjectionMode(mode), mViewMatrix(view), mNear(nearDistance), mFar(farDistance), mAspect(aspect),
      mFovX(fovX), mFovY(fovY) {
    if (aspectMode == CameraSettings::AspectFovXFromY)
        mFovX = static_cast<float>(2.0 * std::atan(std::tan(fovY * RadiansPerDegree * 0.5) * aspect) /
                                   RadiansPerDegree);
    else if (aspectMode == CameraSettings::AspectFovYFromX)
        mFovY = static_cast<float>(2.0 * std::atan(std::tan(fovX * RadiansPerDegree * 0.5) / aspect) /
                                   RadiansPerDegree);

    double tx = std::tan(mFovX * RadiansPerDegree * 0.5);
    double ty = std::tan(mFovY * RadiansPerDegree * 0.5);
    double right = tx * mNear, left = -tx * mNear, top = ty * mNear, bottom = -ty * mNear;
    mRight = static_cast<float>(right);
    mLeft = static_cast<float>(left);
    mTop = static_cast<float>(top);
    mBottom = static_cast<float>(bottom);

    mProjectionMatrix.setIdentity();
    if (mode == CameraSettings::Perspective) {
        double n = mNear, f = mFar;
        mProjectionMatrix(0, 0) = static_cast<float>(2.0 * n / (right - left));
        mProjectionMatrix(1, 1) = static_cast<float>(2.0 * n / (top - bottom));
        mProjectionMatrix(0, 2) = static_cast<float>((right + left) / (right - left));
        mProjectionMatrix(1, 2) = static_cast<float>((top + bottom) / (top - bottom));
        mProjectionMatrix(2, 2) = static_cast<float>((n + f) / (n - f));
        mProjectionMatrix(2, 3) = static_cast<float>(2.0 * n * f / (n - f));
        mProjectionMatrix(3, 2) = -1.0f;
        mProjectionMatrix(3, 3) = 0.0f;
    }

    Dorvan::Matrix<float, 4> clip = mProjectionMatrix * mViewMatrix;
    Dorvan::TVector<float, 4> rows[4];
    for (int r = 0; r < 4; ++r)
        rows[r] =
            Dorvan::TVector<float, 4>(clip.m[r * 4], clip.m[r * 4 + 1], clip.m[r * 4 + 2], clip.m[r * 4 + 3]);
    mPlanes[PlaneRight] = rows[3] - rows[0];
    mPlanes[PlaneLeft] = rows[3] + rows[0];
    mPlanes[PlaneBottom] = rows[3] + rows[1];
    mPlanes[PlaneTop] = rows[3] - rows[1];
    mPlanes[PlaneFar] = rows[3] - rows[2];
    mPlanes[PlaneNear] = rows[3] + rows[2];
    for (int i = 0; i < 6; ++i)
        mPlanes[i].normalize();
    for (int i = 0; i < 8; ++i)
        for (int c = 0; c < 4; ++c)
            mPlaneComponents[c * 8 + i] = mPlanes[i < 6 ? i : PlaneNear].getCoefficients()[c];
}

Frustrum::~Frustrum() {}

}  // namespace Velun
