#pragma once
#include "foundation/SharedPtr.h"
#include "plugins/render/opengl/GLGeometryRenderer.h"
#include "velun_export.h"
#include <cstdint>
#include <vector>

namespace Velun {
class Drawable;
class GLMaterialManager;
class GLRenderContext;
class GLSceneManager;
class Material;
class Node;
class ObjectNode;
class RenderSettings;

// The drawing half of one view pass. The walk only collects drawables, split by the
// blending of their first material; renderAll then draws the opaque ones in the order
// they were met and the blended ones far to near with depth writes off, so that
// everything opaque shows through them.
class VELUN_EXPORT GLObjectRenderer {
public:
    // Nothing is owned: the scene does not change while a pass runs.
    struct RenderEntry {
        float distance;
        ObjectNode* object;
        Drawable* drawable;
        // The drawable's own node, which places it.
        Node* node;
        // Its material 0 as collection found it (null: the manager's default), so that
        // drawing does not look it up again.
        Dorvan::SharedPtr<Material> material;
    };

    GLObjectRenderer(GLRenderContext* context, Dorvan::SharedPtr<RenderSettings> settings);
    virtual ~GLObjectRenderer();
    GLObjectRenderer(GLObjectRenderer const&) = delete;
    GLObjectRenderer& operator=(GLObjectRenderer const&) = delete;

    void setMaterialManager(GLMaterialManager* manager);
    void setSceneManager(GLSceneManager* manager) { mSceneManager = manager; }

    // Collection during the walk; no GL call. `node` is the drawable itself as a node;
    // `distance` orders the blended list.
    void addDrawable(ObjectNode* object, Node& node, Drawable* drawable, float distance);
    void renderAll();
    // Places the drawable by its node's world transformation and draws it.
    void renderDrawable(RenderEntry const& entry);

    std::vector<RenderEntry> const& getOpaqueList() const { return mOpaque; }
    // In drawing order once renderAll has run.
    std::vector<RenderEntry> const& getBlendedList() const { return mBlended; }
    GLGeometryRenderer& getGeometryRenderer() { return mGeometryRenderer; }

private:
    void renderList(std::vector<RenderEntry> const& list);

    Dorvan::SharedPtr<RenderSettings> mSettings;
    GLMaterialManager* mMaterialManager;
    GLSceneManager* mSceneManager;
    GLGeometryRenderer mGeometryRenderer;
    std::vector<RenderEntry> mOpaque;
    std::vector<RenderEntry> mBlended;
    // Uploads made in this pass are recorded under the time it started drawing.
    std::int64_t mStamp;
};

}  // namespace Velun
