#include "Shapes.h"

#include <cmath>
#include <functional>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/IndexedQuads.h"
#include "geometry/VertexData.h"
#include "scene/BoundingBox.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace Showcase {

namespace {

// One quad face: its corner positions in order around the face, its normal, and the
// texture coordinates of its first and third corner.
struct Face {
    float corners[4][3];
    float normal[3];
    float uv0[2] = {0, 0};
    float uv1[2] = {1, 1};
};

// `color` null: no colour array, the material decides.
SharedPtr<Geometry> makeFaces(const std::vector<Face>& faces, const BoundingBox& box,
                              const Color* color = nullptr) {
    GeometryData* geometry = new GeometryData("shape");
    SharedPtr<VertexData> vertices(new VertexData());
    vertices->setUseVertex(true);
    vertices->setUseNormal(true);
    vertices->setUseColor(color != nullptr);
    vertices->setUseTexCoordinates(true);
    vertices->addTextureIndex(0);
    vertices->initialize(static_cast<int>(faces.size() * 4), 4);

    IndexedQuads* quads = new IndexedQuads(static_cast<int>(faces.size()));
    unsigned int next = 0;
    for (const Face& face : faces) {
        for (int i = 0; i < 4; ++i) {
            vertices->addVertex();
            vertices->setVertex(face.corners[i][0], face.corners[i][1], face.corners[i][2]);
            vertices->setNormal(face.normal[0], face.normal[1], face.normal[2]);
            if (color)
                vertices->setColor(*color);
            bool right = i == 1 || i == 2, top = i >= 2;
            vertices->setTexCoordinate(right ? face.uv1[0] : face.uv0[0], top ? face.uv1[1] : face.uv0[1], 0);
        }
        quads->addQuad(next, next + 1, next + 2, next + 3);
        next += 4;
    }
    geometry->setIndexedVertexData(vertices);
    geometry->createGroup().addElement(*quads);
    geometry->setBoundingVolume(new BoundingBox(box));
    return SharedPtr<Geometry>(geometry);
}

}  // namespace

SharedPtr<TextureSource> makeImage(int width, int height, Color::Format format,
                                   const std::function<void(int x, int y, float* channels)>& paint,
                                   bool sixteenBits) {
    TextureInfo info;
    info.setWidth(width);
    info.setHeight(height);
    info.setDepth(1);
    info.setDataType(sixteenBits ? DataType::UnsignedShort : DataType::UnsignedByte);
    info.setColorFormat(format);
    const unsigned int channels = info.getChannels();
    const size_t count = static_cast<size_t>(width) * height * channels;
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(static_cast<unsigned int>(count * (sixteenBits ? 2 : 1)));
    unsigned char* bytes = static_cast<unsigned char*>(pixels.get());
    unsigned short* shorts = static_cast<unsigned short*>(pixels.get());
    float c[4];
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            paint(x, y, c);
            size_t at = (static_cast<size_t>(y) * width + x) * channels;
            for (unsigned int i = 0; i < channels; ++i) {
                float v = std::fmin(1.0f, std::fmax(0.0f, c[i]));
                if (sixteenBits)
                    shorts[at + i] = static_cast<unsigned short>(std::lround(v * 65535.0f));
                else
                    bytes[at + i] = static_cast<unsigned char>(std::lround(v * 255.0f));
            }
        }
    return SharedPtr<TextureSource>(new TextureData(info, pixels));
}

SharedPtr<Texture> makeTexture(SharedPtr<TextureSource> image) {
    SharedPtr<Texture> texture(new Texture2D(image));
    texture->setMagFilter(Texture::Linear);
    texture->setMinFilter(Texture::Trilinear);
    texture->setGenerateMipMaps(true);
    texture->setAllWrapModes(Texture::Repeat);
    texture->setTexMode(Texture::Modulate);
    return texture;
}

float grain(int x, int y, int seed) {
    unsigned int h = static_cast<unsigned int>(x) * 73856093u ^ static_cast<unsigned int>(y) * 19349663u ^
                     static_cast<unsigned int>(seed) * 83492791u;
    h ^= h >> 13;
    h *= 0x5bd1e995u;
    h ^= h >> 15;
    return static_cast<float>(h & 0xFFFF) / 65535.0f;
}

SharedPtr<Geometry> makeQuad(float x0, float y0, float x1, float y1, float uvScale, int divisions) {
    std::vector<Face> faces;
    float dx = (x1 - x0) / divisions, dy = (y1 - y0) / divisions, du = uvScale / divisions;
    for (int j = 0; j < divisions; ++j)
        for (int i = 0; i < divisions; ++i) {
            float ax = x0 + i * dx, ay = y0 + j * dy;
            Face face = {{{ax, ay, 0}, {ax + dx, ay, 0}, {ax + dx, ay + dy, 0}, {ax, ay + dy, 0}}, {0, 0, 1}};
            face.uv0[0] = i * du;
            face.uv0[1] = j * du;
            face.uv1[0] = (i + 1) * du;
            face.uv1[1] = (j + 1) * du;
            faces.push_back(face);
        }
    return makeFaces(faces, BoundingBox(Point(x0, y0, -0.01f), Point(x1, y1, 0.01f)));
}

SharedPtr<Geometry> makeColoredQuad(float x0, float y0, float x1, float y1, Color color) {
    return makeColoredQuads({{x0, y0, x1, y1}}, color);
}

SharedPtr<Geometry> makeColoredQuads(const std::vector<Rect>& rects, Color color) {
    std::vector<Face> faces;
    BoundingBox box;
    for (const Rect& r : rects) {
        faces.push_back({{{r.x0, r.y0, 0}, {r.x1, r.y0, 0}, {r.x1, r.y1, 0}, {r.x0, r.y1, 0}}, {0, 0, 1}});
        box.merge(Point(r.x0, r.y0, -0.01f));
        box.merge(Point(r.x1, r.y1, 0.01f));
    }
    return makeFaces(faces, box, &color);
}

SharedPtr<Geometry> makeBox(float hx, float hy, float hz, bool inside) {
    std::vector<Face> faces = {
        {{{-hx, -hy, hz}, {hx, -hy, hz}, {hx, hy, hz}, {-hx, hy, hz}}, {0, 0, 1}},
        {{{hx, -hy, -hz}, {-hx, -hy, -hz}, {-hx, hy, -hz}, {hx, hy, -hz}}, {0, 0, -1}},
        {{{hx, -hy, hz}, {hx, -hy, -hz}, {hx, hy, -hz}, {hx, hy, hz}}, {1, 0, 0}},
        {{{-hx, -hy, -hz}, {-hx, -hy, hz}, {-hx, hy, hz}, {-hx, hy, -hz}}, {-1, 0, 0}},
        {{{-hx, hy, hz}, {hx, hy, hz}, {hx, hy, -hz}, {-hx, hy, -hz}}, {0, 1, 0}},
        {{{-hx, -hy, -hz}, {hx, -hy, -hz}, {hx, -hy, hz}, {-hx, -hy, hz}}, {0, -1, 0}},
    };
    if (inside) {
        for (Face& face : faces) {
            std::swap(face.corners[1], face.corners[3]);
            for (float& n : face.normal)
                n = -n;
        }
    }
    return makeFaces(faces, BoundingBox(Point(-hx, -hy, -hz), Point(hx, hy, hz)));
}

SharedPtr<Texture> makeCrateTexture(int size) {
    const int border = size / 10, plank = size / 5;
    return makeTexture(makeImage(size, size, Color::Rgb, [=](int x, int y, float* c) {
        bool frame = x < border || y < border || x >= size - border || y >= size - border;
        bool seam = (y % plank) < 2;
        float wood =
            0.85f + 0.15f * std::sin(static_cast<float>(x) * 0.35f + static_cast<float>(y / plank) * 2.0f);
        float shade = frame ? 0.55f : (seam ? 0.45f : wood);
        c[0] = 0.72f * shade;
        c[1] = 0.50f * shade;
        c[2] = 0.28f * shade;
    }));
}

}  // namespace Showcase
