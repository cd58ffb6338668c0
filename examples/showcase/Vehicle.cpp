#include "Vehicle.h"

#include <algorithm>
#include <cmath>

using Dorvan::SharedPtr;
using Dorvan::TVector;
using namespace Velun;

namespace Showcase {

namespace {

// The model is measured in its own units; a quarter of them make a jeep four metres long.
const float JeepScale = 0.25f;
const float JeepSpeed = 0.28f;  // radians of the loop per second, about 6 units a second
const float FloatHeight = 0.25f;

float seconds(std::int64_t& last, std::int64_t now) {
    // The first frame and long pauses move nothing.
    float dt = last < 0 ? 0.0f : std::min(0.1f, float(now - last) / 1000.0f);
    last = now;
    return dt;
}

TVector<float, 3> normalized(TVector<float, 3> v) {
    float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    return length > 0.0f ? TVector<float, 3>(v[0] / length, v[1] / length, v[2] / length) : v;
}

TVector<float, 3> cross(const TVector<float, 3>& a, const TVector<float, 3>& b) {
    return TVector<float, 3>(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
}

// A placement whose y axis is `up`, whose -z axis looks along `forward` as far as the
// ground allows, scaled by `scale` and standing at `position`.
Dorvan::Matrix<float, 4> standing(const Point& position, TVector<float, 3> up, TVector<float, 3> forward,
                                  float scale) {
    float along = forward[0] * up[0] + forward[1] * up[1] + forward[2] * up[2];
    TVector<float, 3> ahead = normalized(TVector<float, 3>(
        forward[0] - along * up[0], forward[1] - along * up[1], forward[2] - along * up[2]));
    TVector<float, 3> right = cross(ahead, up);
    Dorvan::Matrix<float, 4> m = Dorvan::Matrix<float, 4>::identity();
    for (int row = 0; row < 3; ++row) {
        m(row, 0) = right[row] * scale;
        m(row, 1) = up[row] * scale;
        m(row, 2) = -ahead[row] * scale;
        m(row, 3) = position[row];
    }
    return m;
}

}  // namespace

Jeep::Jeep(Nodes& nodes, Branch& root, Valley& valley)
    : mValley(valley), mPlace(place(nodes, root, 0, 0, 0)), mBody(nodes.keep(new Branch())),
      mModel(model(nodes, mBody, "jeep1.ms3d")) {
    mPlace.setChild(mBody);
    standOnGround();
}

// A loop along the river's north bank, between 8 and 16 units from its middle.
Point Jeep::pathPoint(float t) const {
    float x = 30.0f * std::cos(t);
    return Point(x, 0.0f, Valley::riverZ(x) + 12.0f + 4.0f * std::sin(t));
}

Point Jeep::getRearWheels() const {
    const Dorvan::Matrix<float, 4>& m = mPlace.getLocalTransformation();
    // 1.5 units behind the middle, a little above the ground: the model's +z is its back.
    float back = 1.5f / JeepScale, lift = 0.3f / JeepScale;
    return Point(m(0, 3) + m(0, 2) * back + m(0, 1) * lift, m(1, 3) + m(1, 2) * back + m(1, 1) * lift,
                 m(2, 3) + m(2, 2) * back + m(2, 1) * lift);
}

int Jeep::run(std::int64_t timestamp) {
    mPathTime += JeepSpeed * seconds(mLastTime, timestamp);
    standOnGround();
    return 0;
}

void Jeep::standOnGround() {
    Point here = mValley.getTerrain().getSurfacePoint(pathPoint(mPathTime));
    Point ahead = pathPoint(mPathTime + 0.02f);
    TVector<float, 3> up = mValley.getTerrain().getNormal(here);
    TVector<float, 3> forward(ahead[0] - here[0], 0.0f, ahead[2] - here[2]);
    mPlace.setLocalTransformation(standing(here, up, normalized(forward), JeepScale));
}

Floaters::Floaters(Nodes& nodes, Branch& root, Valley& valley)
    : mValley(valley), mPlace(place(nodes, root, 0, 0, 0)) {
    TransformationNode& spin = place(nodes, mPlace, 0, 0, 0);
    TransformationNode& size = place(nodes, spin, 0, 0, 0);
    size.scale(0.012f, false);
    mModel = model(nodes, size, "twospheres.ms3d");
    // They roll slowly as the current turns them.
    start(SharedPtr<VelocityModifier>(new VelocityModifier(spin)))->setRotateY(0.5f);
    restart();
}

void Floaters::restart() {
    mPosition = Point(-Valley::HalfSize + 3.0f, 0.0f, Valley::riverZ(-Valley::HalfSize + 3.0f));
}

int Floaters::run(std::int64_t timestamp) {
    float dt = seconds(mLastTime, timestamp);
    TVector<float, 3> flow = mValley.getRiver().getVelocity(mPosition);
    if (mPosition[0] > Valley::HalfSize - 3.0f || flow[0] == 0.0f)
        restart();
    mPosition[0] += flow[0] * dt;
    // The current keeps them near the middle, where it runs fastest.
    mPosition[2] += flow[2] * dt + (Valley::riverZ(mPosition[0]) - mPosition[2]) * 0.5f * dt;
    Point surface =
        mValley.getRiver().getSurfacePoint(Point(mPosition[0], Valley::waterLevel(), mPosition[2]));
    mPlace.reset();
    mPlace.translate(surface[0], surface[1] + FloatHeight, surface[2], false);
    return 0;
}

}  // namespace Showcase
