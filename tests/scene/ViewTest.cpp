#include "scene/View.h"

#include <cmath>
#include <string>
#include <vector>

#include "SceneFixture.h"
#include "scene/Camera.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/UpdateTraverser.h"

using Dorvan::SharedPtr;
using namespace Velun;
using SceneTest::BoxLeaf;

namespace {

const float Pi = 3.14159265f;

// Records the names of the nodes a walk hands over, with the filter's distance.
class RecordingHandler : public Traverser::Handler {
public:
    explicit RecordingHandler(View::ViewFilter* filter) : mFilter(filter) {}
    void reset(Node&) override {
        mNames.clear();
        mDistances.clear();
    }
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node*) override {
        if (direction != Traverser::DirectionUp && node.getNodeType() == Node::TypeObject) {
            mNames.push_back(node.getName());
            mDistances.push_back(mFilter ? mFilter->getDistance() : 0.0f);
        }
        return Traverser::ResultContinue;
    }
    View::ViewFilter* mFilter;
    std::vector<std::string> mNames;
    std::vector<float> mDistances;
};

// A scene with unit boxes in front of, behind and beside the origin, and a camera
// at the origin that can be turned.
class ViewTest : public SceneTest::EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        mScene = &VelunCore::getSingleton().getSceneManager().createSceneGraph();
        place("ahead", 0.0f, 0.0f, -10.0f);
        place("behind", 0.0f, 0.0f, 10.0f);
        place("right", 10.0f, 0.0f, 0.0f);
        place("farLeft", -100.0f, 0.0f, -10.0f);
        mCameraPlace = new TransformationNode();
        mCamera = new Camera();
        mCameraPlace->setChild(*mCamera);
        mScene->getRoot()->attachChild(*mCameraPlace);
    }
    void TearDown() override {
        mScene->getRoot()->detachChilds();
        for (std::size_t i = 0; i < mPlaces.size(); ++i) {
            delete mPlaces[i]->detachChild();
            delete mPlaces[i];
        }
        delete mCamera;
        delete mCameraPlace;
        EngineTest::TearDown();
    }

    void place(std::string const& name, float x, float y, float z) {
        TransformationNode* node = new TransformationNode();
        node->translate(x, y, z, false);
        node->setChild(*new BoxLeaf(Point(-1.0f, -1.0f, -1.0f), Point(1.0f, 1.0f, 1.0f), name));
        mScene->getRoot()->attachChild(*node);
        mPlaces.push_back(node);
    }

    // Turns the camera about Y, runs the update pass and walks the camera's view.
    std::vector<std::string> visible(float angleY, float aspect = 1.0f) {
        mCameraPlace->reset();
        mCameraPlace->rotateY(angleY, false);
        mScene->getUpdateTraverser()->run(0);
        return walk(mCamera->getView(aspect));
    }

    std::vector<std::string> walk(SharedPtr<View> view) {
        mHandler = SharedPtr<RecordingHandler>(new RecordingHandler(view->getViewFilter()));
        view->addHandler(mHandler);
        view->reset(false);
        view->walk(0, false);
        return mHandler->mNames;
    }

    static std::vector<std::string> names(std::initializer_list<char const*> list) {
        return std::vector<std::string>(list.begin(), list.end());
    }

    SceneGraph* mScene;
    std::vector<TransformationNode*> mPlaces;
    TransformationNode* mCameraPlace;
    Camera* mCamera;
    SharedPtr<RecordingHandler> mHandler;
};

TEST_F(ViewTest, CameraLookingAtTheSceneSeesWhatIsInFront) { EXPECT_EQ(names({"ahead"}), visible(0.0f)); }

TEST_F(ViewTest, CameraLookingAcrossSeesTheSide) {
    // Turned so that its -Z axis points along world +X.
    EXPECT_EQ(names({"right"}), visible(-0.5f * Pi));
}

TEST_F(ViewTest, WideViewportWidensTheHorizontalField) {
    place("wideRight", 15.0f, 0.0f, -10.0f);
    EXPECT_EQ(names({"ahead"}), visible(0.0f, 1.0f));
    EXPECT_EQ(names({"ahead", "wideRight"}), visible(0.0f, 2.0f));
}

TEST_F(ViewTest, DistanceAtHandleTimeBelongsToThatNode) {
    place("far", 0.0f, 0.0f, -40.0f);
    ASSERT_EQ(names({"ahead", "far"}), visible(0.0f));
    EXPECT_GT(mHandler->mDistances[0], 0.0f);
    EXPECT_LT(mHandler->mDistances[0], mHandler->mDistances[1]);
}

TEST_F(ViewTest, NodeNeverUpdatedIsCulled) {
    mScene->getUpdateTraverser()->run(0);
    BoxLeaf fresh(Point(-1.0f, -1.0f, -11.0f), Point(1.0f, 1.0f, -9.0f), "fresh");
    mScene->getRoot()->attachChild(fresh);
    EXPECT_EQ(names({"ahead"}), walk(mCamera->getView(1.0f)));
    mScene->getRoot()->detachChild(fresh.getNodeId());
}

}  // namespace
