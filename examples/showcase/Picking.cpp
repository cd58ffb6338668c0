#include "Picking.h"

#include <cmath>
#include <cstdio>

using namespace Velun;

namespace Showcase {

namespace {

const float Step = 0.25f;
const float Reach = 120.0f;

}  // namespace

Picker::Picker(Branch& root, Valley& valley, Transformation& eye, const CameraSettings& lens, int width,
               int height)
    : mRoot(root), mValley(valley), mEye(eye), mLens(lens), mWidth(width), mHeight(height) {}

std::string Picker::labelOf(Node* node) const {
    for (; node; node = node->getParent()) {
        auto label = mLabels.find(node);
        if (label != mLabels.end())
            return label->second;
    }
    return std::string();
}

std::string Picker::at(const std::string& name, const Point& point) const {
    char text[96];
    std::snprintf(text, sizeof text, "%s at (%.1f, %.1f, %.1f)", name.c_str(), point[0], point[1], point[2]);
    return text;
}

std::string Picker::pick(int x, int y) const {
    // The view's half extents at distance 1: the vertical field of view, and the
    // horizontal one from it by the window's aspect.
    float tanY = std::tan(mLens.getFovY() * 3.14159265f / 360.0f);
    float tanX = tanY * float(mWidth) / float(mHeight);
    float cx = (2.0f * (float(x) + 0.5f) / float(mWidth) - 1.0f) * tanX;
    float cy = (1.0f - 2.0f * (float(y) + 0.5f) / float(mHeight)) * tanY;
    const Dorvan::Matrix<float, 4>& eye = mEye.getLocalTransformation();
    float direction[3], length = 0.0f;
    for (int i = 0; i < 3; ++i) {
        direction[i] = eye(i, 0) * cx + eye(i, 1) * cy - eye(i, 2);
        length += direction[i] * direction[i];
    }
    length = std::sqrt(length);

    BoundingFilter filter;
    filter.setTestDrawableVolumes(true);
    for (float t = float(mLens.getNearDistance()); t < Reach; t += Step) {
        Point p(eye(0, 3) + direction[0] / length * t, eye(1, 3) + direction[1] / length * t,
                eye(2, 3) + direction[2] / length * t);
        filter.setPoint(p);
        for (Drawable* drawable : collectDrawables(mRoot, filter)) {
            std::string name = labelOf(dynamic_cast<Node*>(drawable));
            if (!name.empty())
                return at(name, p);
        }
        if (mValley.getRiver().getDistance(p) < 0.0f)
            return at("river", p);
        if (mValley.getTerrain().getPointHandle(p).inTerrain() && mValley.getTerrain().getDistance(p) < 0.0f)
            return at("ground", p);
    }
    return "nothing";
}

}  // namespace Showcase
