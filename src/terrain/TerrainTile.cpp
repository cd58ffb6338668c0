#include "terrain/TerrainTile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <vector>

#include "core/VelunCore.h"
#include "foundation/CowMemPtr.h"
#include "geometry/DataType.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"
#include "texture/TextureProxy.h"

namespace Velun {

using Vec3 = Dorvan::TVector<float, 3>;

namespace {

// NaN counts as 0; the rest is clamped to [0, 1].
inline float clampUnit(float value) {
    if (!(value > 0.0f))
        return 0.0f;
    return value < 1.0f ? value : 1.0f;
}

inline Vec3 blend(Vec3 const& a, float wa, Vec3 const& b, float wb, Vec3 const& c, float wc) {
    return Vec3(a[0] * wa + b[0] * wb + c[0] * wc, a[1] * wa + b[1] * wb + c[1] * wc,
                a[2] * wa + b[2] * wb + c[2] * wc);
}

}  // namespace

Terrain::Tile::Tile(Terrain& terrain, unsigned int x, unsigned int y, unsigned int vertexNumPerEdge)
    : mEnabled(false), mPosX(x), mPosY(y), mVertexNumPerEdge(vertexNumPerEdge), mOffset(0.0f),
      mMaxHeight(10.0f), mTerrain(terrain), mHeightByteOffset(0), mHeightSlice(0), mBaseScale(1.0f),
      mLightOffset(0.0f), mLightScale(1.0f), mMapWidth(0), mMapHeight(0), mPixelSize(0), mSliceStart(0),
      mWideHeights(false) {}

Terrain::Tile::~Tile() { unload(); }

bool Terrain::Tile::refuse(std::string const& reason) const {
    std::ostringstream text;
    text << "Could not load the height map of terrain tile (" << mPosX << ", " << mPosY << "): " << reason;
    VelunCore::getLogger("terrain")->error(text.str());
    return false;
}

bool Terrain::Tile::load(Dorvan::SharedPtr<TextureSource> heightMap, unsigned int byteOffset,
                         unsigned int slice) {
    if (heightMap.isNull())
        return refuse("no image");
    TextureInfo const& info = heightMap->getTextureInfo();
    const DataType::Type type = info.getDataType();
    if (type != DataType::UnsignedByte && type != DataType::UnsignedShort) {
        VelunCore::getLogger("terrain")->error("Unsupported format: " + DataType::getName(type));
        return false;
    }
    const unsigned int width = info.getWidth();
    const unsigned int height = info.getHeight();
    const unsigned int pixelSize = info.getPixelSize();
    const unsigned int sampleSize = type == DataType::UnsignedShort ? 2 : 1;
    if (width == 0 || height == 0 || !heightMap->getPixel(width - 1, height - 1, slice)) {
        std::ostringstream text;
        text << "slice " << slice << " of a " << width << " x " << height << " x " << info.getDepth()
             << " image holds no pixels";
        return refuse(text.str());
    }
    if (byteOffset + sampleSize > pixelSize) {
        std::ostringstream text;
        text << "byte offset " << byteOffset << " lies outside a pixel of " << pixelSize << " bytes";
        return refuse(text.str());
    }
    mHeightMap = heightMap;
    mHeightByteOffset = byteOffset;
    mHeightSlice = slice;
    mMapWidth = width;
    mMapHeight = height;
    mPixelSize = pixelSize;
    mSliceStart = std::size_t(slice) * width * height * pixelSize + byteOffset;
    mWideHeights = sampleSize == 2;
    mSlopeMap = Dorvan::SharedPtr<TextureSource>();
    return true;
}

void Terrain::Tile::unload() {
    mHeightMap = Dorvan::SharedPtr<TextureSource>();
    mSlopeMap = Dorvan::SharedPtr<TextureSource>();
    mNormalMap = Dorvan::SharedPtr<TextureSource>();
    for (unsigned int i = 0; i < mTextureLayers.size(); ++i)
        delete mTextureLayers.get(i);
    mTextureLayers.clear();
}

void Terrain::Tile::setBaseMap(Dorvan::SharedPtr<TextureSource> baseMap, float scale) {
    mBaseMap = baseMap;
    mBaseScale = scale;
}

void Terrain::Tile::setLightMap(Dorvan::SharedPtr<TextureSource> lightMap, float scale, float offset) {
    mLightMap = lightMap;
    mLightScale = scale;
    mLightOffset = offset;
}

unsigned int Terrain::Tile::addTextureLayer(Dorvan::SharedPtr<TextureSource> texture,
                                            Dorvan::SharedPtr<TextureSource> mask, float scale) {
    Dorvan::SharedPtr<Texture> layer(new Texture2D(texture));
    layer->setTexMode(Texture::PassPrevious);
    layer->setMinFilter(Texture::Trilinear);
    layer->setGenerateMipMaps(true);
    Dorvan::SharedPtr<Texture> maskTexture(new Texture2D(mask));
    maskTexture->setTexMode(Texture::InterpolateByTexture);
    // Masks span the tile once: wrapping would blend the far edge into this one.
    maskTexture->setAllWrapModes(Texture::ClampToEdge);
    mTextureLayers.add(new TextureLayer(layer, maskTexture, scale));
    return mTextureLayers.size() - 1;
}

inline  // Used in this file only, so inline: the queries call these several times each.
    unsigned char const*
    Terrain::Tile::heightPixels() const {
    if (mHeightMap.isNull())
        return nullptr;
    unsigned char const* pixels = static_cast<unsigned char const*>(mHeightMap->getTextureData());
    return pixels ? pixels + mSliceStart : nullptr;
}

inline float Terrain::Tile::relativeHeight(unsigned char const* pixels, unsigned int x,
                                           unsigned int y) const {
    unsigned char const* p = pixels + (std::size_t(y) * mMapWidth + x) * mPixelSize;
    if (mWideHeights) {
        std::uint16_t value;
        std::memcpy(&value, p, sizeof value);
        return float(value) * (1.0f / 65535.0f);
    }
    return float(*p) * (1.0f / 255.0f);
}

inline Terrain::Tile::Cell Terrain::Tile::locate(float u, float v) const {
    const float x = clampUnit(u) * float(mMapWidth - 1);
    const float y = clampUnit(v) * float(mMapHeight - 1);
    Cell cell;
    cell.x0 = static_cast<unsigned int>(x);
    cell.y0 = static_cast<unsigned int>(y);
    cell.fx = x - float(cell.x0);
    cell.fy = y - float(cell.y0);
    // On the last column or row the far neighbour has weight 0: it is the pixel itself.
    cell.x1 = std::min(cell.x0 + 1, mMapWidth - 1);
    cell.y1 = std::min(cell.y0 + 1, mMapHeight - 1);
    return cell;
}

// The cell's two triangles are those the patches draw, split along the diagonal from
// (x1, y0) to (x0, y1).
float Terrain::Tile::getHeight(float u, float v) const {
    unsigned char const* pixels = heightPixels();
    if (!pixels)
        return mOffset;
    const Cell c = locate(u, v);
    const float h01 = relativeHeight(pixels, c.x0, c.y1);
    const float h10 = relativeHeight(pixels, c.x1, c.y0);
    float h;
    if (c.fx + c.fy <= 1.0f) {
        const float h00 = relativeHeight(pixels, c.x0, c.y0);
        h = h00 + (h10 - h00) * c.fx + (h01 - h00) * c.fy;
    } else {
        const float h11 = relativeHeight(pixels, c.x1, c.y1);
        h = h11 + (h01 - h11) * (1.0f - c.fx) + (h10 - h11) * (1.0f - c.fy);
    }
    return mOffset + mMaxHeight * h;
}

// Central differences over the rows (columns) around the pixel, one-sided at the
// border, scaled from height-map steps to the tile's world units.
inline Vec3 Terrain::Tile::texNormal(unsigned char const* pixels, unsigned int x, unsigned int y) const {
    const unsigned int left = x > 0 ? x - 1 : x;
    const unsigned int right = std::min(x + 1, mMapWidth - 1);
    const unsigned int up = y > 0 ? y - 1 : y;
    const unsigned int down = std::min(y + 1, mMapHeight - 1);
    float nx = 0.0f;
    float nz = 0.0f;
    if (right > left) {
        for (unsigned int r = up; r <= down; ++r)
            nx += relativeHeight(pixels, left, r) - relativeHeight(pixels, right, r);
        nx /= float((down - up + 1) * (right - left));
    }
    if (down > up) {
        for (unsigned int c = left; c <= right; ++c)
            nz += relativeHeight(pixels, c, up) - relativeHeight(pixels, c, down);
        nz /= float((right - left + 1) * (down - up));
    }
    const float size = mTerrain.getTileSize();
    return Vec3(nx * mMaxHeight * float(mMapWidth - 1) / size, 1.0f,
                nz * mMaxHeight * float(mMapHeight - 1) / size);
}

Vec3 Terrain::Tile::getNormal(float u, float v) const {
    unsigned char const* pixels = heightPixels();
    if (!pixels)
        return Vec3(0.0f, 1.0f, 0.0f);
    const Cell c = locate(u, v);
    const Vec3 n01 = texNormal(pixels, c.x0, c.y1);
    const Vec3 n10 = texNormal(pixels, c.x1, c.y0);
    if (c.fx + c.fy <= 1.0f)
        return blend(texNormal(pixels, c.x0, c.y0), 1.0f - c.fx - c.fy, n10, c.fx, n01, c.fy).normalized();
    return blend(texNormal(pixels, c.x1, c.y1), c.fx + c.fy - 1.0f, n01, 1.0f - c.fx, n10, 1.0f - c.fy)
        .normalized();
}

// Nearest pixel, the last one for u or v of 1.
Color Terrain::Tile::mapColor(TextureSource const& map, float u, float v) const {
    TextureInfo const& info = map.getTextureInfo();
    if (info.getWidth() == 0 || info.getHeight() == 0)
        return Color(1.0f, 1.0f, 1.0f, 1.0f);
    unsigned int x =
        std::min(static_cast<unsigned int>(float(info.getWidth()) * clampUnit(u)), info.getWidth() - 1);
    unsigned int y =
        std::min(static_cast<unsigned int>(float(info.getHeight()) * clampUnit(v)), info.getHeight() - 1);
    return info.getPixelColor(map.getPixel(x, y, 0));
}

// The alpha carries the first layer's mask, which that layer blends by.
Color Terrain::Tile::getColor(float u, float v, float height) const {
    Color color;
    if (!mColorMap.isNull() && mColorMap->getTextureData()) {
        color = mapColor(*mColorMap, u, v);
    } else {
        if (height < 0.0f)
            height = getHeight(u, v);
        const float grey = mMaxHeight != 0.0f ? (height - mOffset) / mMaxHeight * 0.8f + 0.2f : 0.2f;
        color = Color(grey, grey, grey, 1.0f);
    }
    if (mTextureLayers.size() > 0) {
        Dorvan::SharedPtr<TextureSource> mask = mTextureLayers.get(0)->getMask()->getTextureSource(0, 0);
        if (!mask.isNull() && mask->getTextureData())
            color.a = mapColor(*mask, u, v).r;
    }
    return color;
}

Vec3 Terrain::Tile::worldNormal(Vec3 const& local) const {
    // Normals turn by the inverse transpose of the node's world transformation.
    Dorvan::Matrix<float, 4> const& inverse = mTerrain.getTransformedNode().getInverseWorldTransformation();
    if (inverse.isIdentity())
        return local;
    Vec3 world;
    for (int i = 0; i < 3; ++i)
        world[i] = inverse(0, i) * local[0] + inverse(1, i) * local[1] + inverse(2, i) * local[2];
    return world.normalized();
}

Point Terrain::Tile::getSurfacePoint(PointHandle& handle) const {
    return mTerrain.toWorld(handle.getLocalSurfacePoint());
}

Point Terrain::Tile::getSurfacePoint(Point const& point) const {
    PointHandle handle = mTerrain.getPointHandle(point);
    if (handle.getTile() != this)
        return Point(0.0f, -1.0f, 0.0f);
    return getSurfacePoint(handle);
}

Vec3 Terrain::Tile::getNormal(PointHandle& handle, bool) const {
    if (handle.getTile() != this)
        return Vec3(0.0f, 1.0f, 0.0f);
    return worldNormal(getNormal(handle.getX(), handle.getY()));
}

Vec3 Terrain::Tile::getNormal(Point const& point, bool smooth) const {
    PointHandle handle = mTerrain.getPointHandle(point);
    return getNormal(handle, smooth);
}

float Terrain::Tile::getDistance(PointHandle& handle) const {
    if (handle.getTile() != this)
        return 0.0f;
    Point ground = getSurfacePoint(handle);
    Point const& original = handle.getOrigPoint();
    Vec3 difference(ground[0] - original[0], ground[1] - original[1], ground[2] - original[2]);
    const float distance = difference.length();
    return handle.getLocalPoint()[1] < handle.getLocalSurfacePoint()[1] ? -distance : distance;
}

float Terrain::Tile::getDistance(Point const& point) const {
    PointHandle handle = mTerrain.getPointHandle(point);
    return getDistance(handle);
}

float Terrain::Tile::getSlope(Point const& point) const {
    PointHandle handle = mTerrain.getPointHandle(point);
    if (handle.getTile() != this)
        return -1.0f;
    const float up = getNormal(handle.getX(), handle.getY())[1];
    return std::acos(std::min(std::max(up, -1.0f), 1.0f));
}

Dorvan::SharedPtr<TextureSource> Terrain::Tile::getSlopeMap() {
    if (!mSlopeMap.isNull())
        return mSlopeMap;
    const unsigned int n = mVertexNumPerEdge;
    TextureInfo info(n, n, 1, DataType::UnsignedByte, Color::Luminance);
    Dorvan::CowMemPtr<void> memory;
    memory.alloc(info.getMemSize());
    unsigned char* pixels = static_cast<unsigned char*>(memory.get());
    const float step = n > 1 ? 1.0f / float(n - 1) : 0.0f;
    for (unsigned int y = 0; y < n; ++y)
        for (unsigned int x = 0; x < n; ++x)
            pixels[y * n + x] =
                static_cast<unsigned char>(getNormal(float(x) * step, float(y) * step)[1] * 255.0f);
    mSlopeMap = Dorvan::SharedPtr<TextureSource>(new TextureData(info, memory));
    return mSlopeMap;
}

// Texture units, in vertex layer order: base map, then per layer its texture (and for a
// middle layer its mask), then one unit behind the last layer: the light map carrying the
// last mask as alpha, or the last mask alone, which the last layer blends by.
void Terrain::Tile::updateTile() {
    const unsigned int layers = mTextureLayers.size();
    const bool base = !mBaseMap.isNull();
    const bool tail = !mLightMap.isNull() || layers >= 2;
    buildVertices(layers, base, tail);
    buildMaterial(layers, base, tail);
    mTerrain.updateTile(mPosX, mPosY);
}

namespace {

// Repeats of an image across the tile for a repeat every `scale` units; a scale that is
// not above 0 spans the tile once.
inline float repeats(float tileSize, float scale) { return scale > 0.0f ? tileSize / scale : 1.0f; }

}  // namespace

void Terrain::Tile::buildVertices(unsigned int layers, bool base, bool tail) {
    const unsigned int b = base ? 1 : 0;
    Dorvan::SharedPtr<VertexData> data(new VertexData());
    data->setUseColor(true);
    data->setUseNormal(true);
    data->setUseTexCoordinates(base || layers > 0 || tail);
    std::vector<float> layerRepeats;
    if (base) {
        data->addTextureIndex(0);
        layerRepeats.push_back(repeats(mTerrain.getTileSize(), mBaseScale));
    }
    for (unsigned int i = 0; i < layers; ++i) {
        data->addTextureIndex(b + 2 * i);
        layerRepeats.push_back(repeats(mTerrain.getTileSize(), mTextureLayers.get(i)->getScale()));
        if (i > 0 && i + 1 < layers) {
            data->addTextureIndex(b + 2 * i + 1);
            layerRepeats.push_back(1.0f);
        }
    }
    if (tail) {
        data->addTextureIndex(b + 2 * layers);
        layerRepeats.push_back(1.0f);
    }

    const unsigned int n = mVertexNumPerEdge;
    const float step = n > 1 ? 1.0f / float(n - 1) : 0.0f;
    const float size = mTerrain.getTileSize();
    data->initialize(int(n * n), 12);
    for (unsigned int row = 0; row < n; ++row) {
        // From the indices, so that the last column lies exactly on the tile's edge.
        const float v = float(row) * step;
        for (unsigned int column = 0; column < n; ++column) {
            const float u = float(column) * step;
            const float h = getHeight(u, v);
            data->addVertex();
            data->setVertex(u * size, h, v * size);
            data->setColor(getColor(u, v, h));
            for (unsigned int t = 0; t < layerRepeats.size(); ++t)
                data->setTexCoordinate(u * layerRepeats[t], v * layerRepeats[t], t);
            Vec3 normal = getNormal(u, v);
            data->setNormal(normal[0], normal[1], normal[2]);
        }
    }
    mVertexData = data;
}

void Terrain::Tile::buildMaterial(unsigned int layers, bool base, bool tail) {
    const unsigned int b = base ? 1 : 0;
    Dorvan::SharedPtr<Material> material(new Material());
    // Vertex colours carry the colour map and the first mask; textures may be see-through.
    material->setUseMaterialColor(true);
    material->setUseAlphaTest(false);
    if (base) {
        Dorvan::SharedPtr<Texture> texture(new Texture2D(mBaseMap));
        texture->setTexMode(Texture::Modulate);
        texture->setAllFilters(Texture::Trilinear);
        texture->setGenerateMipMaps(true);
        material->setTexture(0, texture);
    }
    for (unsigned int i = 0; i < layers; ++i) {
        TextureLayer const& layer = *mTextureLayers.get(i);
        if (i == 0)
            layer.getTexture()->setTexMode(Texture::InterpolateByVertexAlpha);
        else if (i + 1 == layers)
            layer.getTexture()->setTexMode(Texture::InterpolateByNextAlpha);
        else
            layer.getTexture()->setTexMode(Texture::PassPrevious);
        material->setTexture(b + 2 * i, layer.getTexture());
        material->setTexture(b + 2 * i + 1, layer.getMask());
    }
    if (tail) {
        Dorvan::SharedPtr<TextureSource> lastMask;
        if (layers >= 2)
            lastMask = mTextureLayers.get(layers - 1)->getMask()->getTextureSource(0, 0);
        Dorvan::SharedPtr<TextureSource> proxy(
            mLightMap.isNull() ? new TextureProxy(lastMask, lastMask, 0.0f, 1.0f, 0)
                               : new TextureProxy(mLightMap, lastMask, mLightScale, mLightOffset, 0));
        Dorvan::SharedPtr<Texture> texture(new Texture2D(proxy));
        texture->setTexMode(Texture::ModulateColor);
        texture->setAllWrapModes(Texture::ClampToEdge);
        material->setTexture(b + 2 * layers, texture);
    }
    mMaterial = material;
}

}  // namespace Velun
