#include "scene/Transformation.h"

#include <cmath>

namespace Velun {

namespace {
typedef Dorvan::Matrix<float, 4> Matrix4;

Matrix4 makeRotation(float angle, float x, float y, float z) {
    float c = std::cos(angle), s = std::sin(angle), t = 1.0f - c;
    Matrix4 r;
    r.setIdentity();
    r(0, 0) = x * x * t + c;
    r(0, 1) = x * y * t - z * s;
    r(0, 2) = x * z * t + y * s;
    r(1, 0) = x * y * t + z * s;
    r(1, 1) = y * y * t + c;
    r(1, 2) = y * z * t - x * s;
    r(2, 0) = x * z * t - y * s;
    r(2, 1) = y * z * t + x * s;
    r(2, 2) = z * z * t + c;
    return r;
}
// Rotation that turns axis a towards axis b: about X for (1, 2), Y for (2, 0), Z for (0, 1).
Matrix4 makePlaneRotation(float angle, int a, int b) {
    float c = std::cos(angle), s = std::sin(angle);
    Matrix4 r;
    r.setIdentity();
    r(a, a) = c;
    r(a, b) = -s;
    r(b, a) = s;
    r(b, b) = c;
    return r;
}
}  // namespace

Transformation::Transformation() : mInverseDirty(false) {
    mLocal.setIdentity();
    mInverse.setIdentity();
}

Transformation::~Transformation() {}

void Transformation::onModified() {}

void Transformation::compose(Matrix4 const& t, bool local) {
    mLocal = local ? mLocal * t : mLocal.leftMultiplied(t);
    mInverseDirty = true;
    onModified();
}

void Transformation::reset() {
    mLocal.setIdentity();
    mInverse.setIdentity();
    mInverseDirty = false;
    onModified();
}

void Transformation::translate(float x, float y, float z, bool local) {
    Matrix4 t;
    t.setIdentity();
    t(0, 3) = x;
    t(1, 3) = y;
    t(2, 3) = z;
    compose(t, local);
}

void Transformation::translate(Dorvan::TVector<float, 3> const& v, bool local) {
    translate(v[0], v[1], v[2], local);
}

void Transformation::rotateX(float angle, bool local) { compose(makePlaneRotation(angle, 1, 2), local); }

void Transformation::rotateY(float angle, bool local) { compose(makePlaneRotation(angle, 2, 0), local); }

void Transformation::rotateZ(float angle, bool local) { compose(makePlaneRotation(angle, 0, 1), local); }

void Transformation::rotate(float angle, Dorvan::TVector<float, 3> const& axis, bool local) {
    Dorvan::TVector<float, 3> n = axis.normalized();
    compose(makeRotation(angle, n[0], n[1], n[2]), local);
}

void Transformation::rotate(float angle, float x, float y, float z, bool local) {
    rotate(angle, Dorvan::TVector<float, 3>(x, y, z), local);
}

void Transformation::rotate(float angle, Dorvan::TVector<float, 3> const& a,
                            Dorvan::TVector<float, 3> const& b, bool local) {
    if (local) {
        translate(a, true);
        rotate(angle, b - a, true);
        translate(-a, true);
    } else {
        translate(-a, false);
        rotate(angle, b - a, false);
        translate(a, false);
    }
}

void Transformation::rotate(Dorvan::Quaternion<float> const&, bool) {}

void Transformation::scale(float x, float y, float z, bool local) {
    Matrix4 t;
    t.setIdentity();
    t(0, 0) = x;
    t(1, 1) = y;
    t(2, 2) = z;
    compose(t, local);
}

void Transformation::scale(float s, bool local) { scale(s, s, s, local); }

void Transformation::multMatrix(Matrix4 const& m, float local) { compose(m, local != 0.0f); }

void Transformation::multMatrix(Dorvan::Matrix<float, 3> const& m, float local) {
    Matrix4 t;
    t.setIdentity();
    t.setUpper(m);
    compose(t, local != 0.0f);
}

void Transformation::setLocalTransformation(Matrix4 const& m) {
    mLocal = m;
    mInverseDirty = true;
    onModified();
}

Matrix4 const& Transformation::getInverseTransformation() const {
    if (mInverseDirty) {
        mInverse = mLocal.inverse();
        mInverseDirty = false;
    }
    return mInverse;
}

}  // namespace Velun
