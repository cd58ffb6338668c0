#include "plugins/render/opengl/GLGeometryRenderer.h"

#include "foundation/Vector.h"
#include "geometry/Drawable.h"
#include "geometry/Geometry.h"
#include "geometry/GeometryElement.h"
#include "geometry/GeometryGroup.h"
#include "geometry/IndexDataSet.h"
#include "geometry/VertexDataSet.h"
#include "material/Material.h"
#include "plugins/render/opengl/GLMaterialManager.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "scene/BoundingBox.h"
#include "scene/RenderSettings.h"

namespace Velun {

using Dorvan::SharedPtr;
using Part = VertexDataSet::Part;

GLGeometryRenderer::GLGeometryRenderer(GLRenderContext* context, SharedPtr<RenderSettings> settings)
    : mSettings(settings), mContext(context), mMaterialManager(nullptr), mPolygonMode(0), mFogSource(-1),
      mAppliedMaterial(nullptr), mTextureMaterial(nullptr), mTextureSet(nullptr),
      mArraySet(nullptr), mArrayStates{-1, -1, -1, -1, -1}, mDrawCalls(0) {}

GLGeometryRenderer::~GLGeometryRenderer() {}

GLenum GLGeometryRenderer::toGLPrimitive(int elementType) {
    switch (elementType) {
    case GeometryElement::Triangles:
        return GL_TRIANGLES;
    case GeometryElement::Quads:
        return GL_QUADS;
    case GeometryElement::Points:
        return GL_POINTS;
    case GeometryElement::Lines:
        return GL_LINES;
    case GeometryElement::LineLoop:
        return GL_LINE_LOOP;
    case GeometryElement::LineStrip:
        return GL_LINE_STRIP;
    case GeometryElement::TriangleStrip:
        return GL_TRIANGLE_STRIP;
    case GeometryElement::QuadStrip:
        return GL_QUAD_STRIP;
    case GeometryElement::TriangleFan:
        return GL_TRIANGLE_FAN;
    case GeometryElement::Polygon:
        return GL_POLYGON;
    default:
        return GL_POINTS;
    }
}

void GLGeometryRenderer::drawDrawable(Drawable* drawable, ObjectNode* object, std::int64_t stamp) {
    drawDrawable(drawable, object, stamp, SharedPtr<Material>());
}

void GLGeometryRenderer::drawDrawable(Drawable* drawable, ObjectNode* object, std::int64_t stamp,
                                      SharedPtr<Material> const& first) {
    SharedPtr<Geometry> geometry = drawable->getGeometry(0);
    if (geometry.isNull())
        return;
    Dorvan::Vector<GeometryGroup*>& groups = geometry->getElementGroups();
    for (unsigned int i = 0; i < groups.size(); ++i) {
        GeometryGroup* group = groups[i];
        if (!group)
            continue;
        // Never null: without a material of its own a group gets a default one.
        unsigned int const index = group->getMaterialIndex();
        SharedPtr<Material> material =
            index == 0 && first ? first : mMaterialManager->getMaterial(drawable, object, index);
        if (material.get() != mAppliedMaterial) {
            mMaterialManager->applyMaterial(material);
            mAppliedMaterial = material.get();
        }
        drawGroup(geometry.get(), group, material, stamp);
    }
}

void GLGeometryRenderer::drawGroup(Geometry* geometry, GeometryGroup* group, SharedPtr<Material> material,
                                   std::int64_t stamp) {
    Dorvan::Vector<GeometryElement*>& elements = group->getElementList(0);
    VertexDataSet* indexedSet = geometry->getIndexedDataSet(0);
    for (unsigned int i = 0; i < elements.size(); ++i) {
        GeometryElement* element = elements[i];
        if (indexedSet) {
            if (IndexElement* indexed = dynamic_cast<IndexElement*>(element)) {
                setupTextures(material, indexedSet);
                drawElements(indexed, indexedSet, stamp);
                continue;
            }
        }
        if (VertexElement* own = dynamic_cast<VertexElement*>(element)) {
            setupTextures(material, &own->getVertexData());
            drawArrays(own, stamp);
        }
    }
}

namespace {

bool sameTextureIndices(VertexDataSet const& a, VertexDataSet const& b) {
    Dorvan::Vector<unsigned int> const& x = a.getTexturesIndices();
    Dorvan::Vector<unsigned int> const& y = b.getTexturesIndices();
    if (x.size() != y.size())
        return false;
    for (unsigned int i = 0; i < x.size(); ++i)
        if (x.get(i) != y.get(i))
            return false;
    return true;
}

}  // namespace

// Objects with data of their own but one material differ only in their coordinates:
// the units keep their textures and are pointed at the new set.
void GLGeometryRenderer::setupTextures(SharedPtr<Material> const& material, VertexDataSet* set) {
    if (material.get() == mTextureMaterial && set == mTextureSet)
        return;
    if (material && material.get() == mTextureMaterial && set && mTextureSet &&
        sameTextureIndices(*set, *mTextureSet))
        mMaterialManager->setupTexCoordinates(*material, *set);
    else
        mMaterialManager->setupTextures(material, set);
    mTextureMaterial = material.get();
    mTextureSet = set;
}

// Only this renderer switches these arrays during a pass, so a state it set stays.
void GLGeometryRenderer::setArrayEnabled(ArraySlot slot, GLenum array, bool on) {
    signed char const state = on ? 1 : 0;
    if (mArrayStates[slot] == state)
        return;
    mContext->setClientStateEnabled(array, on);
    mArrayStates[slot] = state;
}

void GLGeometryRenderer::drawElements(IndexElement* element, VertexDataSet* set, std::int64_t stamp) {
    setupVertexArrays(set, stamp);
    IndexDataSet& indices = element->getIndexList();
    unsigned int count = indices.getCount();
    if (count == 0)
        return;
    const void* pointer = indices.getIndexList();
    if (indices.isBufferable() && mContext->updateIndexBuffer(indices, stamp))
        pointer = nullptr;
    else if (mContext->usesIndexBuffers())
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);  // a client pointer is no offset
    updatePolygonMode();
    glDrawElements(toGLPrimitive(element->getElementType()), count,
                   mContext->toGLType(indices.getIndexType()), pointer);
    ++mDrawCalls;
}

void GLGeometryRenderer::drawArrays(VertexElement* element, std::int64_t stamp) {
    VertexDataSet& set = element->getVertexData();
    setupVertexArrays(&set, stamp);
    if (set.getCount() == 0)
        return;
    updatePolygonMode();
    glDrawArrays(toGLPrimitive(element->getElementType()), 0, set.getCount());
    ++mDrawCalls;
}

void GLGeometryRenderer::setupVertexArrays(VertexDataSet* set, std::int64_t stamp) {
    if (set == mArraySet)
        return;
    mArraySet = set;
    setupPositionArray(*set, stamp);
    setupColorArrays(*set, stamp);
    setupNormalArray(*set, stamp);
    setupFogCoordinateArray(*set, stamp);
}

const void* GLGeometryRenderer::placeArray(VertexDataSet& set, Part part, const void* pointer,
                                           std::int64_t stamp) {
    // Uploads into a buffer object when it can, else points at the client memory with
    // no array buffer bound (a stale binding would turn the pointer into an offset).
    if (set.isBufferable() && mContext->updateVertexBuffer(set, part, stamp))
        return nullptr;
    if (mContext->usesVertexBuffers())
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    return pointer;
}

void GLGeometryRenderer::setupPositionArray(VertexDataSet& set, std::int64_t stamp) {
    const void* pointer = set.getVertices();
    setArrayEnabled(SlotVertex, GL_VERTEX_ARRAY, pointer != nullptr);
    if (pointer)
        glVertexPointer(set.getNumVertex(), mContext->toGLType(set.getVertexType()),
                        set.getStride(Part::Vertex), placeArray(set, Part::Vertex, pointer, stamp));
}

void GLGeometryRenderer::setupColorArrays(VertexDataSet& set, std::int64_t stamp) {
    const void* pointer = set.getColor();
    setArrayEnabled(SlotColor, GL_COLOR_ARRAY, pointer != nullptr);
    if (pointer)
        glColorPointer(set.getNumColor(), mContext->toGLType(set.getColorType()), set.getStride(Part::Color),
                       placeArray(set, Part::Color, pointer, stamp));

    pointer = set.getSecondaryColor();
    const bool secondary = pointer != nullptr;
    setArrayEnabled(SlotSecondaryColor, GL_SECONDARY_COLOR_ARRAY, secondary);
    // Off without the array: the current secondary colour is whatever the last array
    // left. Lit faces take their secondary colour from the lighting instead.
    mContext->setEnabled(GL_COLOR_SUM, secondary);
    if (secondary)
        glSecondaryColorPointer(set.getNumSecondaryColor(), mContext->toGLType(set.getSecondaryColorType()),
                                set.getStride(Part::SecondaryColor),
                                placeArray(set, Part::SecondaryColor, pointer, stamp));
}

void GLGeometryRenderer::setupNormalArray(VertexDataSet& set, std::int64_t stamp) {
    const void* pointer = set.getNormals();
    setArrayEnabled(SlotNormal, GL_NORMAL_ARRAY, pointer != nullptr);
    if (pointer) {
        glNormalPointer(mContext->toGLType(set.getNormalType()), set.getStride(Part::Normal),
                        placeArray(set, Part::Normal, pointer, stamp));
    } else {
        // Without normals a face lights as if it faced its own +Z, not with the
        // normal of whatever was drawn before.
        glNormal3f(0.0f, 0.0f, 1.0f);
    }
}

void GLGeometryRenderer::setupFogCoordinateArray(VertexDataSet& set, std::int64_t stamp) {
    const void* pointer = set.getFogCoordinates();
    const bool fogCoordinates = pointer != nullptr;
    setArrayEnabled(SlotFogCoordinate, GL_FOG_COORD_ARRAY, fogCoordinates);
    if (fogCoordinates)
        glFogCoordPointer(mContext->toGLType(set.getFogCoordinateType()), set.getStride(Part::FogCoordinate),
                          placeArray(set, Part::FogCoordinate, pointer, stamp));
    // Fog reads the set's coordinates while it has them, the fragment depth otherwise.
    GLint fogSource = fogCoordinates ? GL_FOG_COORD : GL_FRAGMENT_DEPTH;
    if (fogSource != mFogSource) {
        glFogi(GL_FOG_COORD_SRC, fogSource);
        mFogSource = fogSource;
    }
}

void GLGeometryRenderer::updatePolygonMode() {
    GLenum mode = GL_FILL;
    if (!mSettings.isNull()) {
        switch (mSettings->getShadingMode()) {
        case RenderSettings::ShadePoints:
            mode = GL_POINT;
            break;
        case RenderSettings::ShadeWireframe:
            mode = GL_LINE;
            break;
        default:
            mode = GL_FILL;
            break;
        }
    }
    if (mode != mPolygonMode) {
        glPolygonMode(GL_FRONT_AND_BACK, mode);
        mPolygonMode = mode;
    }
}

void GLGeometryRenderer::drawBoundingBox(BoundingVolume const* volume) {
    BoundingBox const* box = dynamic_cast<BoundingBox const*>(volume);
    if (!box)
        return;
    Point const& a = box->getMin();
    Point const& b = box->getMax();
    glColor3f(1.0f, 1.0f, 1.0f);
    mAppliedMaterial = nullptr;  // the colour is no longer the material's
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glBegin(GL_QUAD_STRIP);
    glVertex3f(a[0], a[1], a[2]);
    glVertex3f(b[0], a[1], a[2]);
    glVertex3f(a[0], b[1], a[2]);
    glVertex3f(b[0], b[1], a[2]);
    glVertex3f(a[0], b[1], b[2]);
    glVertex3f(b[0], b[1], b[2]);
    glVertex3f(a[0], a[1], b[2]);
    glVertex3f(b[0], a[1], b[2]);
    glVertex3f(a[0], a[1], a[2]);
    glVertex3f(b[0], a[1], a[2]);
    glEnd();
    if (mPolygonMode == 0)
        mPolygonMode = GL_LINE;
    else
        glPolygonMode(GL_FRONT_AND_BACK, mPolygonMode);
}

}  // namespace Velun
