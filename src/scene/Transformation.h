#pragma once

#include "scene/Matrix.h"
#include "scene/Quaternion.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// A local 4x4 transformation relative to the parent, with its inverse computed when
// first asked for. Each composing operation takes `local`: false applies the new
// transformation after the present one, along the parent's axes; true applies it
// first, along the node's own axes. Angles are radians.
class VELUN_EXPORT Transformation {
public:
    Transformation();
    virtual ~Transformation();

    // Back to the identity.
    void reset();

    void translate(float x, float y, float z, bool local);
    void translate(Dorvan::TVector<float, 3> const& v, bool local);
    void rotateX(float angle, bool local);
    void rotateY(float angle, bool local);
    void rotateZ(float angle, bool local);
    // About an axis through the origin; the axis is normalised first.
    void rotate(float angle, Dorvan::TVector<float, 3> const& axis, bool local);
    void rotate(float angle, float x, float y, float z, bool local);
    // About the line through a and b.
    void rotate(float angle, Dorvan::TVector<float, 3> const& a, Dorvan::TVector<float, 3> const& b,
                bool local);
    // Reserved: does nothing.
    void rotate(Dorvan::Quaternion<float> const& rotation, bool local);
    void scale(float x, float y, float z, bool local);
    void scale(float s, bool local);
    // `local` counts as true for any value other than 0.
    void multMatrix(Dorvan::Matrix<float, 4> const& m, float local);
    // The 3x3 matrix as the upper left of an otherwise identity transformation.
    void multMatrix(Dorvan::Matrix<float, 3> const& m, float local);
    // Replaces the whole transformation.
    void setLocalTransformation(Dorvan::Matrix<float, 4> const& m);

    Dorvan::Matrix<float, 4> const& getLocalTransformation() const { return mLocal; }
    Dorvan::Matrix<float, 4> const& getInverseTransformation() const;

protected:
    // Called as the last step of every change.
    virtual void onModified();

private:
    void compose(Dorvan::Matrix<float, 4> const& t, bool local);

    Dorvan::Matrix<float, 4> mLocal;
    mutable Dorvan::Matrix<float, 4> mInverse;
    mutable bool mInverseDirty;
};

}  // namespace Velun
