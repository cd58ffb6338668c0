#include "Shapes.h"

#include <cmath>
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

SharedPtr<Texture> makeTexture(int size, const std::vector<unsigned char>& rgb) {
    TextureInfo info;
    info.setWidth(size);
    info.setHeight(size);
    info.setDepth(1);
    info.setDataType(DataType::UnsignedByte);
    info.setColorFormat(Color::Rgb);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(static_cast<unsigned int>(rgb.size()));
    std::copy(rgb.begin(), rgb.end(), static_cast<unsigned char*>(pixels.get()));

    SharedPtr<Texture> texture(new Texture2D(SharedPtr<TextureSource>(new TextureData(info, pixels))));
    texture->setMagFilter(Texture::Linear);
    texture->setMinFilter(Texture::Trilinear);
    texture->setGenerateMipMaps(true);
    texture->setAllWrapModes(Texture::Repeat);
    texture->setTexMode(Texture::Modulate);
    return texture;
}

unsigned char toByte(float v) {
    return static_cast<unsigned char>(std::lround(std::fmin(1.0f, std::fmax(0.0f, v)) * 255));
}

}  // namespace

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

SharedPtr<Texture> makeCheckerTexture(int size, int cells, Color a, Color b) {
    std::vector<unsigned char> rgb(static_cast<size_t>(size) * size * 3);
    int cell = size / cells;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const Color& c = ((x / cell + y / cell) % 2) ? a : b;
            // A little grain, so the ground does not look like plastic.
            float grain = 0.92f + 0.08f * static_cast<float>((x * 7919 + y * 104729) % 97) / 96.0f;
            unsigned char* p = &rgb[(static_cast<size_t>(y) * size + x) * 3];
            p[0] = toByte(c.r * grain);
            p[1] = toByte(c.g * grain);
            p[2] = toByte(c.b * grain);
        }
    return makeTexture(size, rgb);
}

SharedPtr<Texture> makeCrateTexture(int size) {
    std::vector<unsigned char> rgb(static_cast<size_t>(size) * size * 3);
    int border = size / 10;
    int plank = size / 5;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            bool frame = x < border || y < border || x >= size - border || y >= size - border;
            bool seam = (y % plank) < 2;
            float wood = 0.85f + 0.15f * std::sin(static_cast<float>(x) * 0.35f +
                                                  static_cast<float>(y / plank) * 2.0f);
            float shade = frame ? 0.55f : (seam ? 0.45f : wood);
            unsigned char* p = &rgb[(static_cast<size_t>(y) * size + x) * 3];
            p[0] = toByte(0.72f * shade);
            p[1] = toByte(0.50f * shade);
            p[2] = toByte(0.28f * shade);
        }
    return makeTexture(size, rgb);
}

}  // namespace Showcase
