#pragma once

// The valley the showcase drives through: a terrain of 4 x 4 tiles whose height maps
// are painted from one height function (a river channel winding between hills), with
// a base map, grass, sand and rock layers and a light map; a river of `Water` along
// the channel; the sky and the sun.

#include "Scene.h"

namespace Showcase {

class Valley {
public:
    Valley(Nodes& nodes, Velun::Branch& root);

    Velun::Terrain& getTerrain() { return mTerrain; }
    Velun::Water& getRiver() { return mRiver; }

    // The river's middle line: its z at a world x.
    static float riverZ(float x);
    // The height of the water surface, in world units.
    static float waterLevel();
    // The valley spans -HalfSize to HalfSize in x and z.
    static const float HalfSize;

private:
    void buildTerrain();
    void paintTile(Velun::Terrain::Tile& tile);
    void buildRiver();

    Velun::Terrain& mTerrain;
    Velun::Water& mRiver;
};

// A camp on the river's south bank: crates stacked by a campfire.
class Camp {
public:
    Camp(Nodes& nodes, Velun::Branch& root, Valley& valley);
    // On the ground, in world coordinates.
    const Velun::Point& getCampfire() const { return mCampfire; }
    // The crates hang below it.
    Velun::Branch& getCrates() { return mCrates; }

private:
    Velun::Point mCampfire;
    Velun::Branch& mCrates;
};

}  // namespace Showcase
