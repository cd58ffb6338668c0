#include "support/GLDrawFixture.h"

#include "geometry/ElementData.h"
#include "plugins/render/opengl/GLRenderContext.h"

namespace RenderGLTest {

using Velun::Color;

class GLGeometryRendererTest : public GLDrawTest {
protected:
    Velun::GLRenderContext& context() { return *sWindow->getGLRenderContext(); }

    // The shared vertex set of the quad below `place`.
    static Velun::VertexData& verticesOf(Velun::TransformationNode& place) {
        Velun::GeometryObject* object = static_cast<Velun::GeometryObject*>(place.getChild());
        return *dynamic_cast<Velun::VertexData*>(
            object->getSubobjectAt(0)->getGeometry(0)->getIndexedDataSet(0));
    }
};

TEST_F(GLGeometryRendererTest, ModifiedDataIsUploadedOnceAfterTheChangeNotOnEveryFrame) {
    addViewport(addCamera());
    QuadSpec shape;
    shape.colors = true;
    shape.normals = true;
    shape.color = Color(1, 0, 0);
    SharedPtr<Velun::Material> material(new Velun::Material());
    Velun::TransformationNode& place = addQuad(root(), 0, 0, -5, shape, material);
    Velun::VertexData& vertices = verticesOf(place);

    frame();
    EXPECT_TRUE(near(centre(), Rgb{255, 0, 0}, 0));
    unsigned int const afterFirst = context().getBufferLoadCount();
    frame();
    frame();
    EXPECT_EQ(context().getBufferLoadCount(), afterFirst);

    // A change stamps the set; the next frame loads its buffers again, later ones don't.
    for (unsigned int i = 0; i < 4; ++i) {
        vertices.setCurrentVertex(i);
        vertices.setColor(0, 0, 1, 1);
    }
    vertices.setModified();
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 0, 255}, 0));
    unsigned int const afterChange = context().getBufferLoadCount();
    EXPECT_GT(afterChange, afterFirst);
    frame();
    frame();
    frame();
    EXPECT_EQ(context().getBufferLoadCount(), afterChange);
}

TEST_F(GLGeometryRendererTest, WireframeShadingDrawsOnlyTheEdges) {
    SharedPtr<Velun::Camera> camera = addCamera();
    camera->getCamSettings().getRenderSettings()->setShadingMode(Velun::RenderSettings::ShadeWireframe);
    addViewport(camera);
    QuadSpec shape;
    shape.x0 = shape.y0 = -2;
    shape.x1 = shape.y1 = 2;
    addQuad(root(), 0, 0, -5, shape, colorMaterial(Color(1, 1, 1)));
    frame();
    savePicture("wireframe");
    EXPECT_TRUE(near(centre(), Rgb{0, 0, 0}, 0));
    int edge = 0;
    for (int x = 0; x < Width; ++x)
        edge += pixel(x, Height / 2).r == 255;
    EXPECT_EQ(edge, 2);  // the left and the right edge cross the middle row

    camera->getCamSettings().getRenderSettings()->setShadingMode(Velun::RenderSettings::ShadeSmooth);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{255, 255, 255}, 0));
}

TEST_F(GLGeometryRendererTest, VertexElementIsDrawnFromItsOwnVertices) {
    addViewport(addCamera());
    // A geometry without a shared set: one element with vertices of its own.
    Velun::GeometryData* geometry = new Velun::GeometryData("strip");
    Velun::VertexElementData* strip = new Velun::VertexElementData(Velun::GeometryElement::TriangleStrip);
    Velun::VertexData& data = strip->getVertexData();
    data.setUseVertex(true);
    data.initialize(4, 4);
    float const corners[4][2] = {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}};
    for (auto const& c : corners) {
        data.addVertex();
        data.setVertex(c[0], c[1], 0);
    }
    geometry->createGroup().addElement(*strip);
    geometry->setBoundingVolume(
        new Velun::BoundingBox(Velun::Point(-1, -1, -0.1f), Velun::Point(1, 1, 0.1f)));

    Velun::TransformationNode& place = this->own(new Velun::TransformationNode());
    place.translate(0, 0, -5, false);
    root().attachChild(place);
    Velun::GeometryObject& object = this->own(new Velun::GeometryObject());
    Velun::GeometrySubobject* sub = new Velun::GeometrySubobject();
    sub->setGeometry(SharedPtr<Velun::Geometry>(geometry), 0);
    sub->setMaterial(0, colorMaterial(Color(0, 1, 1)));
    object.addSubobject(*sub);
    place.setChild(object);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 255, 255}, 0));
}

}  // namespace RenderGLTest
