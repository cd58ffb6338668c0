// Frame time of N small lit, textured cubes, each its own object node, in a 256x256
// window: the scene of the peer benchmarks (cube layout, camera, light and texture come
// from their draw_scene.h), drawn through the whole engine: update pass, culling walk,
// collection, materials, buffers and the window's swap. bench/compare_cubes.sh runs it
// next to the raw-GL program and Irrlicht and prints the per-object slopes.
//
// BM_Cubes: one geometry shared by all cubes. BM_CubesModified: every cube has its own
// vertex data, modified once before the first frame; the frames after the first must
// load nothing ("buffer_loads_per_frame" stays 0).
// PEERS_NO_RASTER=1 wraps each frame in GL_RASTERIZER_DISCARD, as the peers' no-raster
// runs do, so that API, state and vertex work are timed without rasterisation.
#include <benchmark/benchmark.h>

#if __has_include("draw_scene.h")
#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include "core/VelunCore.h"
#include "foundation/CowMemPtr.h"
#include "geometry/ElementData.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/VertexData.h"
#include "material/Material.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "scene/BoundingBox.h"
#include "scene/Branch.h"
#include "scene/TransformationNode.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"

// After the engine's headers, which bring GLEW before any other GL header.
#include "draw_scene.h"
// After draw_scene.h, whose constants it uses.
#include "PeerScene.h"

namespace {

using Dorvan::SharedPtr;
using namespace Velun;

// 36 vertices (12 triangles) with normals and texture coordinates, faces counter
// clockwise from outside, as the peers' cube.
SharedPtr<Geometry> makeCube() {
    const float h = cubescene::kCubeSize * 0.5f;
    const float f[6][9] = {{1, 0, 0, 0, 0, -1, 0, 1, 0}, {-1, 0, 0, 0, 0, 1, 0, 1, 0},
                           {0, 1, 0, 1, 0, 0, 0, 0, -1}, {0, -1, 0, 1, 0, 0, 0, 0, 1},
                           {0, 0, 1, 1, 0, 0, 0, 1, 0},  {0, 0, -1, -1, 0, 0, 0, 1, 0}};
    const float corner[6][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, -1}, {1, 1}, {-1, 1}};
    GeometryData* geometry = new GeometryData("cube");
    VertexElementData* triangles = new VertexElementData(GeometryElement::Triangles);
    VertexData& v = triangles->getVertexData();
    v.setUseVertex(true);
    v.setUseNormal(true);
    v.setUseTexCoordinates(true);
    v.addTextureIndex(0);
    v.initialize(36, 36);
    for (const auto& F : f)
        for (const auto& c : corner) {
            v.addVertex();
            v.setVertex(h * (F[0] + c[0] * F[3] + c[1] * F[6]), h * (F[1] + c[0] * F[4] + c[1] * F[7]),
                        h * (F[2] + c[0] * F[5] + c[1] * F[8]));
            v.setNormal(F[0], F[1], F[2]);
            v.setTexCoordinate(0.5f * (c[0] + 1), 0.5f * (c[1] + 1), 0);
        }
    geometry->createGroup().addElement(*triangles);
    geometry->setBoundingVolume(new BoundingBox(Point(-h, -h, -h), Point(h, h, h)));
    return SharedPtr<Geometry>(geometry);
}

SharedPtr<Material> makeMaterial() {
    std::vector<unsigned char> rgba = cubescene::make_texture();
    TextureInfo info;
    info.setWidth(cubescene::kTex);
    info.setHeight(cubescene::kTex);
    info.setDepth(1);
    info.setDataType(DataType::UnsignedByte);
    info.setColorFormat(Color::Rgba);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(rgba.size());
    std::copy(rgba.begin(), rgba.end(), static_cast<unsigned char*>(pixels.get()));
    SharedPtr<Texture> texture(new Texture2D(SharedPtr<TextureSource>(new TextureData(info, pixels))));
    texture->setAllFilters(Texture::Linear);
    texture->setTexMode(Texture::Modulate);
    // The peers' white material under a white light with a global ambient of 0.2.
    SharedPtr<Material> material(new Material());
    material->setAmbientMaterialColor(Color(1, 1, 1));
    material->setDiffuseMaterialColor(Color(1, 1, 1));
    material->setSpecularMaterialColor(Color(0, 0, 0));
    material->setUseAlphaTest(false);
    material->setTexture(0, texture);
    return material;
}

// Row-major engine matrix from the peers' column-major GL model matrix.
Dorvan::Matrix<float, 4> toMatrix(const float m[16]) {
    Dorvan::Matrix<float, 4> r;
    for (int row = 0; row < 4; ++row)
        for (int col = 0; col < 4; ++col)
            r.m[row * 4 + col] = m[col * 4 + row];
    r.mIdentity = false;
    return r;
}

PeerScene::Engine& engine() {
    static PeerScene::Engine e("cubes");
    return e;
}

// N cubes in front of the camera; torn down with the benchmark run.
class CubeScene : public PeerScene::Stage {
public:
    CubeScene(int n, bool ownData) : Stage(*engine().window) {
        root().attachChild(camera());
        SharedPtr<Material> material = makeMaterial();
        SharedPtr<Geometry> shared = makeCube();
        for (const cubescene::Cube& c : cubescene::make_cubes(n)) {
            GeometryObject* object = new GeometryObject();
            GeometrySubobject* sub = new GeometrySubobject();
            SharedPtr<Geometry> geometry = ownData ? makeCube() : shared;
            if (ownData) {
                VertexElement* element =
                    dynamic_cast<VertexElement*>(geometry->getElementGroups()[0]->getElementList(0)[0]);
                dynamic_cast<VertexData&>(element->getVertexData()).setModified();
            }
            sub->setGeometry(geometry, 0);
            object->addSubobject(*sub);
            object->setDefaultMaterial(0, material);
            float m[16];
            cubescene::gl_model_matrix(c, m);
            object->getTransformation(*sub)->setLocalTransformation(toMatrix(m));
            root().attachChild(*object);
            mObjects.emplace_back(object);
        }
    }

private:
    std::vector<std::unique_ptr<GeometryObject>> mObjects;
};

void runCubes(benchmark::State& state, bool ownData) {
    if (!engine().window) {
        state.SkipWithError("no GL window");
        return;
    }
    CubeScene scene(int(state.range(0)), ownData);
    scene.timeFrames(state);
    state.counters["objects"] = double(state.range(0));
}

void BM_Cubes(benchmark::State& state) { runCubes(state, false); }
void BM_CubesModified(benchmark::State& state) { runCubes(state, true); }

BENCHMARK(BM_Cubes)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CubesModified)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace

#endif
