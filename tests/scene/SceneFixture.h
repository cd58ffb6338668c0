#pragma once

#include <gtest/gtest.h>

#include "scene/BoundingBox.h"
#include "scene/Branch.h"
#include "scene/Leaf.h"
#include "scene/Transformation.h"
#include "scene/TransformationNode.h"
#include "support/Engine.h"

namespace SceneTest {

// Nodes take their ids from the engine's SceneManager.
using EngineTest = VelunTest::EngineTest;

// A fixture's first member: it starts the engine, so that nodes can be members after it.
struct StartedEngine {
    StartedEngine() { Velun::VelunCore::getSingleton().startup(); }
};

inline void expectPoint(Velun::Point const& p, float x, float y, float z) {
    EXPECT_NEAR(p[0], x, 1e-5f);
    EXPECT_NEAR(p[1], y, 1e-5f);
    EXPECT_NEAR(p[2], z, 1e-5f);
}

typedef Dorvan::Matrix<float, 4> Matrix4;

inline void expectNear(Matrix4 const& a, Matrix4 const& b, float tolerance) {
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(a.m[i], b.m[i], tolerance) << "element " << i;
}

// Turned about Z, then moved.
inline Matrix4 turnedAndMoved(float angle, float x, float y = 0) {
    Velun::Transformation t;
    t.rotateZ(angle, false);
    t.translate(x, y, 0, false);
    return t.getLocalTransformation();
}

// Hangs each node below the one before it: chain({&root, &place, &leaf}).
inline void chain(std::initializer_list<Velun::Node*> nodes) {
    for (auto parent = nodes.begin(); parent + 1 < nodes.end(); ++parent) {
        if (auto* place = dynamic_cast<Velun::TransformationNode*>(*parent))
            place->setChild(*parent[1]);
        else
            dynamic_cast<Velun::Branch&>(**parent).attachChild(*parent[1]);
    }
}

// A leaf with an optional box of its own that counts the update pass's visits.
class BoxLeaf : public Velun::Leaf {
public:
    explicit BoxLeaf(std::string const& name = std::string(), NodeType type = TypeObject)
        : Leaf(type, name), mHasBox(false), mVisits(0) {}
    BoxLeaf(Velun::Point const& min, Velun::Point const& max, std::string const& name = std::string())
        : Leaf(TypeObject, name), mHasBox(true), mBox(min, max), mVisits(0) {}

    Velun::BoundingVolume const* getBoundingVolume() const override { return mHasBox ? &mBox : nullptr; }
    void update(bool entering) override {
        if (entering)
            ++mVisits;
    }

    bool mHasBox;
    Velun::BoundingBox mBox;
    int mVisits;
};

// Groups that count the update pass's visits on the way down and up.
template <class Group>
class Counting : public Group {
public:
    explicit Counting(std::string const& name = std::string()) : Group(name) {}
    void update(bool entering) override { ++(entering ? mDown : mUp); }
    int mDown = 0;
    int mUp = 0;
};
using CountingBranch = Counting<Velun::Branch>;
using CountingTransformation = Counting<Velun::TransformationNode>;

}  // namespace SceneTest
