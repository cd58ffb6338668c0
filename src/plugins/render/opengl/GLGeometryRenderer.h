#pragma once
#include "foundation/SharedPtr.h"
#include "geometry/VertexDataSet.h"
#include "velun_export.h"
#include <GL/glew.h>
#include <cstdint>

namespace Velun {
class BoundingVolume;
class Drawable;
class Geometry;
class GeometryGroup;
class GLMaterialManager;
class GLRenderContext;
class IndexElement;
class Material;
class ObjectNode;
class RenderSettings;
class VertexElement;

// Turns one Drawable into client-array set-up and draw calls. Lives for one view pass,
// so the cached polygon mode starts unknown in every pass.
class VELUN_EXPORT GLGeometryRenderer {
public:
    GLGeometryRenderer(GLRenderContext* context, Dorvan::SharedPtr<RenderSettings> settings);
    ~GLGeometryRenderer();
    GLGeometryRenderer(GLGeometryRenderer const&) = delete;
    GLGeometryRenderer& operator=(GLGeometryRenderer const&) = delete;

    void setMaterialManager(GLMaterialManager* manager) { mMaterialManager = manager; }

    // `stamp` is the time the uploads of this draw are recorded under.
    void drawDrawable(Drawable* drawable, ObjectNode* object, std::int64_t stamp);
    // `first`, when set, is the drawable's material 0, looked up already.
    void drawDrawable(Drawable* drawable, ObjectNode* object, std::int64_t stamp,
                      Dorvan::SharedPtr<Material> const& first);
    void drawGroup(Geometry* geometry, GeometryGroup* group, Dorvan::SharedPtr<Material> material,
                   std::int64_t stamp);
    void drawElements(IndexElement* element, VertexDataSet* set, std::int64_t stamp);
    void drawArrays(VertexElement* element, std::int64_t stamp);
    void setupVertexArrays(VertexDataSet* set, std::int64_t stamp);

    // Debugging aid: the box in white wireframe, at the current modelview matrix.
    void drawBoundingBox(BoundingVolume const* volume);

    // glDrawElements and glDrawArrays calls issued by this renderer.
    unsigned int getDrawCallCount() const { return mDrawCalls; }

    static GLenum toGLPrimitive(int elementType);

private:
    const void* placeArray(VertexDataSet& set, VertexDataSet::Part part, const void* pointer,
                           std::int64_t stamp);
    void setupPositionArray(VertexDataSet& set, std::int64_t stamp);
    // Primary and secondary colours; the secondary ones are added to unlit faces.
    void setupColorArrays(VertexDataSet& set, std::int64_t stamp);
    void setupNormalArray(VertexDataSet& set, std::int64_t stamp);
    void setupFogCoordinateArray(VertexDataSet& set, std::int64_t stamp);
    void updatePolygonMode();
    void setupTextures(Dorvan::SharedPtr<Material> const& material, VertexDataSet* set);
    enum ArraySlot {
        SlotVertex = 0,
        SlotColor = 1,
        SlotSecondaryColor = 2,
        SlotNormal = 3,
        SlotFogCoordinate = 4
    };
    void setArrayEnabled(ArraySlot slot, GLenum array, bool on);

    Dorvan::SharedPtr<RenderSettings> mSettings;
    GLRenderContext* mContext;
    GLMaterialManager* mMaterialManager;
    GLenum mPolygonMode;
    GLint mFogSource;  // GL_FOG_COORD_SRC as last set, -1 before the first draw
    // What the last draw of this pass left in GL. Nothing changes in the scene while a
    // pass runs, so the same material, or the same data set, need not be stated again
    // for the next draw; a new pass starts with nothing known.
    Material* mAppliedMaterial;
    Material* mTextureMaterial;
    VertexDataSet* mTextureSet;
    VertexDataSet* mArraySet;
    // Whether each array of ArraySlot is on: -1 unknown, 0 off, 1 on.
    signed char mArrayStates[5];
    unsigned int mDrawCalls;
};

}  // namespace Velun
