// Frame time of the peers' terrain (irr_terrain: a 257 x 257 map of hills over 256 x 256
// units, 0 to 25 high) at full detail, lit, untextured white, seen from 250 units above
// its centre in a 256 x 256 window, with the peers' light (draw_scene.h).
//
// BM_TerrainFrame: through the whole engine (update pass, culling walk, materials,
// buffers, swap); "draw_calls_per_frame" should equal "patches" and
// "buffer_loads_per_frame" stay 0. BM_TerrainFrameRawGL: the same vertex and index
// arrays, uploaded once into buffer objects and drawn with plain GL calls, one draw per
// patch, in the same window. The engine's frame should stay within 1.2 times the raw one.
// bench/compare_terrain.sh runs this next to irr_terrain. PEERS_NO_RASTER=1 times both
// without rasterisation, as the peers' no-raster runs do.
#include <benchmark/benchmark.h>

#if __has_include("draw_scene.h")
#include <GL/glew.h>
#include <GL/glu.h>
#include <SDL/SDL.h>

#include <cmath>
#include <memory>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "geometry/GeometryElement.h"
#include "geometry/GeometryGroup.h"
#include "geometry/IndexDataSet.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLViewRenderer.h"
#include "scene/TransformationNode.h"
#include "scene/View.h"
#include "terrain/Terrain.h"
#include "terrain/TerrainPatch.h"
#include "terrain/TerrainTile.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"

#include "draw_scene.h"
// After draw_scene.h, whose constants it uses.
#include "PeerScene.h"

namespace {

using Dorvan::SharedPtr;
using namespace Velun;

const unsigned int MapSize = 257;
const float TerrainSize = 256.0f;
const float TerrainHeight = 25.0f;

// The peers' hills: symmetric, 0 to 255.
int hill(int u, int v) {
    const double k = 2 * 3.14159265358979323846 / 256, a = k * (u - 128), b = k * (v - 128);
    const double h =
        0.5 + 0.2 * std::cos(3 * a) + 0.2 * std::cos(3 * b) + 0.1 * std::cos(7 * a) * std::cos(7 * b);
    return std::max(0, std::min(255, int(std::lround(255 * h))));
}

SharedPtr<TextureSource> greyImage(unsigned int size, unsigned char (*value)(unsigned int, unsigned int)) {
    TextureInfo info(size, size, 1, DataType::UnsignedByte, Color::Luminance);
    Dorvan::CowMemPtr<void> data;
    data.alloc(info.getMemSize());
    unsigned char* p = static_cast<unsigned char*>(data.get());
    for (unsigned int y = 0; y < size; ++y)
        for (unsigned int x = 0; x < size; ++x)
            *p++ = value(x, y);
    return SharedPtr<TextureSource>(new TextureData(info, data));
}

PeerScene::Engine& engine() {
    static PeerScene::Engine e("terrain");
    return e;
}

// The terrain, and the camera above it looking down with +z up.
class TerrainScene : public PeerScene::Stage {
public:
    TerrainScene() : Stage(*engine().window), mTerrain(new Terrain(1, 1)) {
        mTerrain->initializeTerrain(4, 4, TerrainSize);
        Terrain::Tile& tile = *mTerrain->getTile(0, 0);
        tile.load(
            greyImage(MapSize, [](unsigned int x, unsigned int y) { return (unsigned char)hill(x, y); }));
        tile.setMaxHeight(TerrainHeight);
        tile.setColorMap(greyImage(1, [](unsigned int, unsigned int) { return (unsigned char)255; }));
        tile.setEnabled(true);
        tile.updateTile();
        root().attachChild(*mTerrain);

        mCameraPlace.reset(new TransformationNode());
        mCameraPlace->translate(TerrainSize / 2, 250.0f, TerrainSize / 2, false);
        mCameraPlace->rotateY(float(M_PI), true);
        mCameraPlace->rotateX(-float(M_PI) / 2, true);
        mCameraPlace->setChild(camera());
        root().attachChild(*mCameraPlace);
    }

    Terrain& terrain() { return *mTerrain; }

    // Draw calls of one pass of the camera's view, without a swap.
    unsigned int drawCalls() {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        GLViewRenderer pass(engine().window->getGLRenderContext(), camera().getView(1.0f),
                            SharedPtr<RenderSettings>(), camera().getView(1.0f)->getFrustrum());
        pass.traverse();
        pass.setProjection();
        pass.setModelview();
        pass.render();
        pass.popModelview();
        return pass.getObjectRenderer().getGeometryRenderer().getDrawCallCount();
    }

private:
    std::unique_ptr<Terrain> mTerrain;
    std::unique_ptr<TransformationNode> mCameraPlace;
};

void BM_TerrainFrame(benchmark::State& state) {
    if (!engine().window) {
        state.SkipWithError("no GL window");
        return;
    }
    TerrainScene scene;
    scene.timeFrames(state);
    state.counters["patches"] = scene.terrain().getPatchCount();
    state.counters["draw_calls_per_frame"] = scene.drawCalls();
}

// The terrain's arrays in buffer objects of its own, drawn as a fixed-function GL
// program would: the engine only made the data.
class RawTerrain {
public:
    explicit RawTerrain(Terrain& terrain) {
        VertexData const& vertices = *terrain.getTile(0, 0)->getVertexData();
        const unsigned int count = vertices.getCount();
        glGenBuffers(3, mArrays);
        upload(mArrays[0], vertices.getVertices(), count * 3 * sizeof(float));
        upload(mArrays[1], vertices.getNormals(), count * 3 * sizeof(float));
        upload(mArrays[2], vertices.getColor(), count * 4 * sizeof(float));
        for (unsigned int i = 0; i < terrain.getPatchCount(); ++i) {
            GeometryElement* element =
                terrain.getPatch(i)->getGeometry(0)->getElementGroups()[0]->getElementList(0)[0];
            IndexDataSet& indices = dynamic_cast<IndexElement*>(element)->getIndexList();
            GLuint buffer = 0;
            glGenBuffers(1, &buffer);
            glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffer);
            glBufferData(GL_ELEMENT_ARRAY_BUFFER, indices.getCount() * sizeof(unsigned short),
                         indices.getIndexList(), GL_STATIC_DRAW);
            mIndices.push_back(buffer);
            mCounts.push_back(GLsizei(indices.getCount()));
        }
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    }
    ~RawTerrain() {
        glDeleteBuffers(3, mArrays);
        glDeleteBuffers(GLsizei(mIndices.size()), mIndices.data());
    }

    void frame(bool swap = true) {
        glViewport(0, 0, cubescene::kWin, cubescene::kWin);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        gluPerspective(cubescene::kFovYDeg, 1.0, cubescene::kNear, cubescene::kFar);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        gluLookAt(TerrainSize / 2, 250, TerrainSize / 2, TerrainSize / 2, 0, TerrainSize / 2, 0, 0, 1);
        setLight();
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_COLOR_MATERIAL);
        glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
        bindArrays();
        if (cubescene::no_raster())
            glEnable(cubescene::kRasterizerDiscard);
        for (std::size_t i = 0; i < mIndices.size(); ++i) {
            glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mIndices[i]);
            glDrawElements(GL_TRIANGLE_STRIP, mCounts[i], GL_UNSIGNED_SHORT, nullptr);
        }
        if (cubescene::no_raster())
            glDisable(cubescene::kRasterizerDiscard);
        if (swap)
            SDL_GL_SwapBuffers();
    }

private:
    static void upload(GLuint buffer, void const* data, std::size_t bytes) {
        glBindBuffer(GL_ARRAY_BUFFER, buffer);
        glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(bytes), data, GL_STATIC_DRAW);
    }
    static void setLight() {
        const float* L = cubescene::kLightDir;
        const GLfloat towards[4] = {-L[0], -L[1], L[2], 0};
        const GLfloat white[4] = {1, 1, 1, 1}, black[4] = {0, 0, 0, 1};
        const GLfloat ambient[4] = {cubescene::kAmbient, cubescene::kAmbient, cubescene::kAmbient, 1};
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, towards);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glLightfv(GL_LIGHT0, GL_AMBIENT, black);
        glLightfv(GL_LIGHT0, GL_SPECULAR, black);
    }
    void bindArrays() {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glEnableClientState(GL_COLOR_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, mArrays[0]);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, mArrays[1]);
        glNormalPointer(GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, mArrays[2]);
        glColorPointer(4, GL_FLOAT, 0, nullptr);
    }

    GLuint mArrays[3];
    std::vector<GLuint> mIndices;
    std::vector<GLsizei> mCounts;
};

void BM_TerrainFrameRawGL(benchmark::State& state) {
    if (!engine().window) {
        state.SkipWithError("no GL window");
        return;
    }
    TerrainScene scene;
    RawTerrain raw(scene.terrain());
    for (int i = 0; i < cubescene::kWarmupFrames; ++i)
        raw.frame();
    glFinish();
    for (auto _ : state)
        raw.frame();
    glFinish();
    state.counters["draw_calls_per_frame"] = scene.terrain().getPatchCount();
    raw.frame(false);
    state.counters["coverage"] = PeerScene::Stage::backBufferCoverage();
}

BENCHMARK(BM_TerrainFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TerrainFrameRawGL)->Unit(benchmark::kMillisecond);

}  // namespace

#endif
