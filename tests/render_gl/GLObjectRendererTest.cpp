#include "support/GLDrawFixture.h"

#include <gmock/gmock.h>

#include "plugins/render/opengl/GLViewRenderer.h"
#include "scene/View.h"

namespace RenderGLTest {

using Velun::Color;

class GLObjectRendererTest : public GLDrawTest {
protected:
    // Half-transparent by vertex colour; the alpha test would reject alpha 0.5.
    SharedPtr<Velun::Material> blended() {
        SharedPtr<Velun::Material> material(new Velun::Material());
        material->setUseBlending(true);
        material->setUseAlphaTest(false);
        return material;
    }

    QuadSpec tinted(Color const& color, float half) {
        QuadSpec shape;
        shape.x0 = shape.y0 = -half;
        shape.x1 = shape.y1 = half;
        shape.colors = true;
        shape.color = color;
        return shape;
    }

    // A far red and a near green quad, both at alpha 0.5, in the given tree order.
    void buildPair(bool nearFirst) {
        if (nearFirst)
            addQuad(root(), 0, 0, -5, tinted(Color(0, 1, 0, 0.5f), 1), blended());
        addQuad(root(), 0, 0, -10, tinted(Color(1, 0, 0, 0.5f), 4), blended());
        if (!nearFirst)
            addQuad(root(), 0, 0, -5, tinted(Color(0, 1, 0, 0.5f), 1), blended());
    }
};

// Red over black, then green over that: (0.25, 0.5, 0). The other order would give
// (0.5, 0.25, 0).
TEST_F(GLObjectRendererTest, BlendedQuadsAreDrawnFarThenNearWhenTheNearOneComesFirst) {
    addViewport(addCamera());
    buildPair(true);
    frame();
    savePicture("blend_near_first");
    EXPECT_TRUE(near(centre(), Rgb{64, 128, 0}, 2));
    EXPECT_TRUE(near(pixel(Width / 2, 21), Rgb{128, 0, 0}, 2));  // the far quad alone
}

TEST_F(GLObjectRendererTest, OpaqueObjectBehindABlendedOneShowsThroughIt) {
    addViewport(addCamera());
    // The blended quad is nearer and met first in the tree; it still goes last and
    // writes no depth, so the blue quad behind it is drawn and seen through it.
    addQuad(root(), 0, 0, -5, tinted(Color(1, 0, 0, 0.5f), 1), blended());
    addQuad(root(), 0, 0, -10, QuadSpec(), colorMaterial(Color(0, 0, 1)));
    frame();
    savePicture("opaque_behind_blended");
    EXPECT_TRUE(near(centre(), Rgb{128, 0, 128}, 2));
    GLboolean depthWrites = GL_FALSE;
    glGetBooleanv(GL_DEPTH_WRITEMASK, &depthWrites);
    EXPECT_EQ(depthWrites, GL_TRUE);
}

TEST_F(GLObjectRendererTest, EqualDistancesKeepTraversalOrderAndEntriesSortFarToNear) {
    SharedPtr<Velun::Camera> camera = addCamera();
    addQuad(root(), 0, 0, -5, tinted(Color(1, 0, 0, 0.5f), 1), blended());
    addQuad(root(), 0, 0, -9, tinted(Color(0, 1, 0, 0.5f), 1), blended());
    addQuad(root(), 0, 0, -5, tinted(Color(0, 0, 1, 0.5f), 1), blended());
    addQuad(root(), 0, 0, -7, QuadSpec(), colorMaterial(Color(1, 1, 1)));
    mScene->getUpdateTraverser()->run(mTime);
    SharedPtr<Velun::View> view = camera->getView(1.0f);
    Velun::GLViewRenderer pass(sWindow->getGLRenderContext(), view, view->getRenderSettings(),
                               view->getFrustrum());
    pass.run();
    Velun::GLObjectRenderer& objects = pass.getObjectRenderer();
    ASSERT_EQ(objects.getOpaqueList().size(), 1u);
    auto const& blendedList = objects.getBlendedList();
    ASSERT_EQ(blendedList.size(), 3u);
    EXPECT_GT(blendedList[0].distance, blendedList[1].distance);
    EXPECT_EQ(blendedList[1].distance, blendedList[2].distance);
    // Of the two at distance 5, the red one (first in the tree) comes first.
    auto colourOf = [](Velun::Drawable* drawable) {
        Velun::VertexDataSet* set = drawable->getGeometry(0)->getIndexedDataSet(0);
        return static_cast<float const*>(set->getColor())[0];
    };
    EXPECT_EQ(colourOf(blendedList[1].drawable), 1.0f);
    EXPECT_EQ(colourOf(blendedList[2].drawable), 0.0f);
    EXPECT_EQ(objects.getGeometryRenderer().getDrawCallCount(), 4u);
}

TEST_F(GLObjectRendererTest, DrawableWithoutMaterialIsDrawnWithTheDefaultNotWithLeftoverState) {
    addViewport(addCamera());
    // A blended, tinted quad first, then one with no material at all: it must come out
    // in the default material's white, opaque and untextured.
    addQuad(root(), -2, 0, -5, tinted(Color(1, 0, 0, 0.5f), 1), blended());
    addQuad(root(), 2, 0, -5, QuadSpec(), SharedPtr<Velun::Material>());
    frame();
    savePicture("default_material");
    EXPECT_TRUE(near(pixel(Width / 2 + 13, Height / 2), Rgb{255, 255, 255}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 - 13, Height / 2), Rgb{128, 0, 0}, 2));
}

// An index list whose component type GL refuses, to make a draw fail.
class FloatIndices : public Velun::IndexElement, public Velun::IndexDataSet {
public:
    FloatIndices() : mId(createDataSetId()) {}
    ElementType getElementType() const override { return Triangles; }
    Velun::IndexDataSet& getIndexList() override { return *this; }
    const void* getIndexList() const override { return mIndices; }
    unsigned int getCount() const override { return 3; }
    Velun::DataType::Type getIndexType() const override { return Velun::DataType::Float; }
    std::uint64_t getId() const override { return mId; }
    bool isBufferable() const override { return false; }
    bool hasChanged(std::int64_t) const override { return false; }

private:
    std::uint64_t mId;
    float mIndices[3] = {0, 1, 2};
};

TEST_F(GLObjectRendererTest, GLErrorOfADrawableIsLoggedOnceAndDrawingGoesOn) {
    addViewport(addCamera());
    Velun::GeometryData* geometry = new Velun::GeometryData("broken");
    SharedPtr<Velun::VertexData> vertices(new Velun::VertexData());
    vertices->setUseVertex(true);
    vertices->initialize(3, 3);
    for (int i = 0; i < 3; ++i) {
        vertices->addVertex();
        vertices->setVertex(float(i), float(i % 2), 0);
    }
    geometry->setIndexedVertexData(vertices);
    Velun::GeometryDataGroup& group = geometry->createGroup();
    FloatIndices broken;
    group.getElementList(0).add(&broken);
    geometry->setBoundingVolume(new Velun::BoundingBox(Velun::Point(0, 0, -0.1f), Velun::Point(2, 1, 0.1f)));

    Velun::TransformationNode& place = own(new Velun::TransformationNode());
    place.translate(-2, 0, -5, false);
    Velun::GeometryObject& object = own(new Velun::GeometryObject());
    Velun::GeometrySubobject* sub = new Velun::GeometrySubobject();
    sub->setGeometry(SharedPtr<Velun::Geometry>(geometry), 0);
    object.addSubobject(*sub);
    place.setChild(object);
    root().attachChild(place);
    addQuad(root(), 2, 0, -5, QuadSpec(), colorMaterial(Color(1, 1, 0)));

    testing::internal::CaptureStderr();
    frame();
    std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log, "GL Error: invalid enumerant\n");
    EXPECT_TRUE(near(pixel(Width / 2 + 13, Height / 2), Rgb{255, 255, 0}, 0));
    group.getElementList(0).clear();  // the element lives on this test's stack
}

}  // namespace RenderGLTest
