#pragma once

// What moves through the valley: a jeep that drives a loop over the terrain, standing
// on it (placed with getSurfacePoint and tilted by getNormal every frame), and two
// spheres that float down the river, carried by its flow and riding its surface.

#include "Scene.h"
#include "Valley.h"

namespace Showcase {

class Jeep : public Velun::Process {
public:
    Jeep(Nodes& nodes, Velun::Branch& root, Valley& valley);

    // The node the jeep stands on: the chase camera and the engine sound follow it.
    Velun::TransformationNode& getPlace() { return mPlace; }
    // What rides with the jeep hangs here.
    Velun::Branch& getBody() { return mBody; }
    // Between the rear wheels, in world coordinates: where the dust rises.
    Velun::Point getRearWheels() const;
    bool isLoaded() const { return mModel != nullptr; }

    int run(std::int64_t timestamp) override;

private:
    Velun::Point pathPoint(float t) const;
    void standOnGround();

    Valley& mValley;
    Velun::TransformationNode& mPlace;
    Velun::Branch& mBody;
    Velun::ObjectNode* mModel;
    float mPathTime = 0.0f;  // radians around the loop
    std::int64_t mLastTime = -1;
};

class Floaters : public Velun::Process {
public:
    Floaters(Nodes& nodes, Velun::Branch& root, Valley& valley);

    bool isLoaded() const { return mModel != nullptr; }
    Velun::TransformationNode& getPlace() { return mPlace; }
    int run(std::int64_t timestamp) override;

private:
    void restart();

    Valley& mValley;
    Velun::TransformationNode& mPlace;
    Velun::ObjectNode* mModel;
    Velun::Point mPosition;
    std::int64_t mLastTime = -1;
};

}  // namespace Showcase
