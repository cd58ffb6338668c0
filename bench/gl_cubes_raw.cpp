// The raw-GL baseline of bench_gl_cubes, as a Google Benchmark program so that both
// run in one script (bench/compare_cubes.sh): the peers' cube scene (draw_scene.h)
// drawn by hand with GL 1.5 through SDL 1.2, the least a program can do.
//
// BM_RawCubes: one vertex buffer shared by every cube, as the peers' gl_draw.
// BM_RawCubesOwnBuffers: each cube has its own interleaved vertex buffer, bound and
// pointed at before its draw: the fair baseline of BM_CubesModified.
// BM_RawCubesOwnBuffersPerAttribute: each cube has a buffer per attribute (position,
// normal, texture coordinate), the layout the engine keeps for a vertex data set.
// ...BothSides: the same with face culling off, as the engine draws (it never culls
// faces), so that the rasteriser has the same fragments to fill.
// PEERS_NO_RASTER=1 wraps each frame in GL_RASTERIZER_DISCARD, as bench_gl_cubes does.
#include <benchmark/benchmark.h>

#if __has_include("draw_scene.h")
#include <GL/glew.h>
#include <SDL/SDL.h>

#include <chrono>
#include <cmath>
#include <thread>
#include <vector>

#include "draw_scene.h"

namespace {

enum Layout { Shared = 0, OwnInterleaved = 1, OwnPerAttribute = 2 };

// Position, normal and texture coordinate of the 36 vertices, interleaved.
std::vector<float> cubeVertices() {
    const float h = cubescene::kCubeSize * 0.5f;
    const float f[6][9] = {{1, 0, 0, 0, 0, -1, 0, 1, 0}, {-1, 0, 0, 0, 0, 1, 0, 1, 0},
                           {0, 1, 0, 1, 0, 0, 0, 0, -1}, {0, -1, 0, 1, 0, 0, 0, 0, 1},
                           {0, 0, 1, 1, 0, 0, 0, 1, 0},  {0, 0, -1, -1, 0, 0, 0, 1, 0}};
    const float corner[6][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, -1}, {1, 1}, {-1, 1}};
    std::vector<float> v;
    for (const auto& F : f)
        for (const auto& c : corner) {
            for (int k = 0; k < 3; ++k)
                v.push_back(h * (F[k] + c[0] * F[3 + k] + c[1] * F[6 + k]));
            for (int k = 0; k < 3; ++k)
                v.push_back(F[k]);
            v.push_back(0.5f * (c[0] + 1));
            v.push_back(0.5f * (c[1] + 1));
        }
    return v;
}

// One attribute (first `width` floats from `offset` of each vertex) as its own array.
std::vector<float> attribute(std::vector<float> const& v, int offset, int width) {
    std::vector<float> a;
    for (std::size_t i = 0; i < v.size(); i += 8)
        a.insert(a.end(), v.begin() + i + offset, v.begin() + i + offset + width);
    return a;
}

GLuint makeBuffer(std::vector<float> const& data) {
    GLuint id = 0;
    glGenBuffers(1, &id);
    glBindBuffer(GL_ARRAY_BUFFER, id);
    glBufferData(GL_ARRAY_BUFFER, data.size() * sizeof(float), data.data(), GL_STATIC_DRAW);
    return id;
}

void pointInterleaved(GLuint buffer) {
    const GLsizei stride = 8 * sizeof(float);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glVertexPointer(3, GL_FLOAT, stride, nullptr);
    glNormalPointer(GL_FLOAT, stride, reinterpret_cast<const void*>(3 * sizeof(float)));
    glTexCoordPointer(2, GL_FLOAT, stride, reinterpret_cast<const void*>(6 * sizeof(float)));
}

void pointPerAttribute(GLuint const* buffers) {
    glBindBuffer(GL_ARRAY_BUFFER, buffers[0]);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[1]);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[2]);
    glTexCoordPointer(2, GL_FLOAT, 0, nullptr);
}

// The window and the fixed state of gl_draw, made once for the program.
struct Window {
    bool ok = false;
    GLuint texture = 0;
    float lightPosition[4] = {0, 0, 0, 0};

    Window() {
        // A loaded machine now and then refuses an X connection: try a few times.
        for (int attempt = 0; attempt < 5 && !ok; ++attempt) {
            if (attempt > 0) {
                SDL_Quit();
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
            }
            ok = open();
        }
        if (ok)
            setState();
    }

    bool open() {
        if (SDL_Init(SDL_INIT_VIDEO) != 0)
            return false;
        SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
        SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
        SDL_GL_SetAttribute(SDL_GL_SWAP_CONTROL, 0);
        return SDL_SetVideoMode(cubescene::kWin, cubescene::kWin, 0, SDL_OPENGL) && glewInit() == GLEW_OK &&
               GLEW_VERSION_1_5;
    }

    void setState() {
        glViewport(0, 0, cubescene::kWin, cubescene::kWin);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glEnable(GL_CULL_FACE);
        glClearColor(cubescene::kClear[0] / 255.f, cubescene::kClear[1] / 255.f, cubescene::kClear[2] / 255.f,
                     1.f);
        std::vector<unsigned char> rgba = cubescene::make_texture();
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, cubescene::kTex, cubescene::kTex, 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, rgba.data());
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glEnable(GL_TEXTURE_2D);
        const float white[4] = {1, 1, 1, 1}, black[4] = {0, 0, 0, 1};
        const float ambient[4] = {cubescene::kAmbient, cubescene::kAmbient, cubescene::kAmbient, 1};
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glLightfv(GL_LIGHT0, GL_AMBIENT, black);
        glLightfv(GL_LIGHT0, GL_SPECULAR, black);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, white);
        glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, black);
        const float* L = cubescene::kLightDir;
        const float l = std::sqrt(L[0] * L[0] + L[1] * L[1] + L[2] * L[2]);
        lightPosition[0] = -L[0] / l;
        lightPosition[1] = -L[1] / l;
        lightPosition[2] = L[2] / l;
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        const float top = cubescene::kNear * std::tan(cubescene::kFovYDeg * 0.5f * 3.14159265f / 180.f);
        glFrustum(-top, top, -top, top, cubescene::kNear, cubescene::kFar);
        glMatrixMode(GL_MODELVIEW);
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    }
};

Window& window() {
    static Window w;
    return w;
}

// N cubes with their matrices and, per layout, their buffers.
class RawScene {
public:
    RawScene(int n, Layout layout) : mLayout(layout) {
        for (const cubescene::Cube& c : cubescene::make_cubes(n)) {
            mMatrices.resize(mMatrices.size() + 16);
            cubescene::gl_model_matrix(c, &mMatrices[mMatrices.size() - 16]);
        }
        std::vector<float> v = cubeVertices();
        int buffersPerCube = layout == OwnPerAttribute ? 3 : 1;
        int cubes = layout == Shared ? 1 : n;
        for (int i = 0; i < cubes; ++i)
            for (int b = 0; b < buffersPerCube; ++b)
                mBuffers.push_back(buffersPerCube == 1 ? makeBuffer(v)
                                                       : makeBuffer(attribute(v, b * 3, b == 2 ? 2 : 3)));
        if (layout == Shared)
            pointInterleaved(mBuffers[0]);
    }
    ~RawScene() { glDeleteBuffers(static_cast<GLsizei>(mBuffers.size()), mBuffers.data()); }

    void frame() {
        SDL_Event e;
        while (SDL_PollEvent(&e)) {
        }
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glLoadIdentity();
        glLightfv(GL_LIGHT0, GL_POSITION, window().lightPosition);
        if (cubescene::no_raster())
            glEnable(cubescene::kRasterizerDiscard);
        std::size_t n = mMatrices.size() / 16;
        for (std::size_t i = 0; i < n; ++i) {
            if (mLayout == OwnInterleaved)
                pointInterleaved(mBuffers[i]);
            else if (mLayout == OwnPerAttribute)
                pointPerAttribute(&mBuffers[i * 3]);
            glPushMatrix();
            glMultMatrixf(&mMatrices[i * 16]);
            glDrawArrays(GL_TRIANGLES, 0, 36);
            glPopMatrix();
        }
        if (cubescene::no_raster())
            glDisable(cubescene::kRasterizerDiscard);
        SDL_GL_SwapBuffers();
    }

private:
    Layout mLayout;
    std::vector<float> mMatrices;
    std::vector<GLuint> mBuffers;
};

void runRaw(benchmark::State& state, Layout layout, bool cullFaces = true) {
    if (!window().ok) {
        state.SkipWithError("no GL window");
        return;
    }
    if (cullFaces)
        glEnable(GL_CULL_FACE);
    else
        glDisable(GL_CULL_FACE);
    RawScene scene(int(state.range(0)), layout);
    for (int i = 0; i < cubescene::kWarmupFrames; ++i)
        scene.frame();
    glFinish();
    for (auto _ : state)
        scene.frame();
    glFinish();
    state.counters["objects"] = double(state.range(0));
}

void BM_RawCubes(benchmark::State& state) { runRaw(state, Shared); }
void BM_RawCubesOwnBuffers(benchmark::State& state) { runRaw(state, OwnInterleaved); }
void BM_RawCubesOwnBuffersPerAttribute(benchmark::State& state) { runRaw(state, OwnPerAttribute); }
void BM_RawCubesBothSides(benchmark::State& state) { runRaw(state, Shared, false); }
void BM_RawCubesOwnBuffersBothSides(benchmark::State& state) { runRaw(state, OwnInterleaved, false); }

BENCHMARK(BM_RawCubes)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RawCubesOwnBuffers)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RawCubesOwnBuffersPerAttribute)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RawCubesBothSides)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RawCubesOwnBuffersBothSides)->Arg(200)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace

#endif
