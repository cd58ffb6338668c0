#pragma once

// Picking: what lies under a window pixel. The ray from the main camera through the
// pixel is followed in small steps; at each step a BoundingFilter walk collects the
// drawables whose volumes hold the point, and the first labelled one wins. The ground
// and the river answer where the ray meets their surfaces.

#include <map>
#include <string>

#include "Scene.h"
#include "Valley.h"

namespace Showcase {

class Picker {
public:
    Picker(Velun::Branch& root, Valley& valley, Velun::Transformation& eye, const Velun::CameraSettings& lens,
           int width, int height);

    // A name for an object: its parts are reported under it.
    void label(Velun::Node& node, const std::string& name) { mLabels[&node] = name; }

    // What lies under pixel (x, y) (top row 0), e.g. "jeep at (3.1, 2.0, 12.4)", or
    // "nothing".
    std::string pick(int x, int y) const;

private:
    std::string labelOf(Velun::Node* node) const;
    std::string at(const std::string& name, const Velun::Point& point) const;

    Velun::Branch& mRoot;
    Valley& mValley;
    Velun::Transformation& mEye;
    const Velun::CameraSettings& mLens;
    int mWidth, mHeight;
    std::map<const Velun::Node*, std::string> mLabels;
};

}  // namespace Showcase
