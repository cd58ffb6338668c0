#pragma once

#include <GL/glew.h>

#include <cstdint>

#include "foundation/SharedPtr.h"
#include "texture/Texture.h"
#include "velun_export.h"

namespace Velun {

class Drawable;
class GLRenderContext;
class GLSceneManager;
class Material;
class ObjectNode;
class TextureSource;
class VertexDataSet;

// Turns a Material and its Textures into GL state when a geometry group or element is
// drawn: colours, blending, alpha test, point sprites, the render-settings override,
// and per texture unit the texture object, its parameters and its environment. Nothing
// is cached between draws but the GL objects themselves; pixels travel to the card
// only when the texture's stamps say they changed. Lives for one pass.
class VELUN_EXPORT GLMaterialManager {
public:
    explicit GLMaterialManager(GLRenderContext* context);
    virtual ~GLMaterialManager();

    void setSceneManager(GLSceneManager* sceneManager);

    // The drawable's material of that index, else the object's default one, else a
    // default Material, so nothing of the previous drawable shows.
    Dorvan::SharedPtr<Material> getMaterial(Drawable* drawable, ObjectNode* object, unsigned int index);
    // False for a null material, which changes no state.
    bool applyMaterial(Dorvan::SharedPtr<Material> material);
    // Binds texture unit i to the material texture that entry i of the set's texture
    // indices names, with its coordinates; units beyond are switched off. Always true.
    bool setupTextures(Dorvan::SharedPtr<Material> material, VertexDataSet* set);
    // Only points the units at the set's coordinates: for a set with the same texture
    // indices as the one setupTextures last ran for with this material, whose textures
    // stay bound.
    void setupTexCoordinates(Material& material, VertexDataSet& set);
    // Switches off every texture unit the last set-up used.
    void disableTextures();

    // GL target of a texture type, 0 for an unknown one.
    static GLenum toGLTarget(Texture::TextureType type);

    GLMaterialManager(GLMaterialManager const&) = delete;
    GLMaterialManager& operator=(GLMaterialManager const&) = delete;

private:
    void applyMaterialState(Material& material);
    void setPointSprites(Material const& material);
    GLenum bindTexture(Texture& texture, std::int64_t now, GLenum previousUnit);
    bool updateTextureData(GLenum target, Texture& texture, bool changed, std::int64_t stamp,
                           unsigned int index);
    void updateTextureParameters(GLenum target, Texture& texture, GLenum previousUnit);
    void buildMipmaps2D(Texture& texture, unsigned int index);
    void loadTextureData(GLenum target, TextureSource& source, unsigned int level);
    void disableUnit(unsigned int unit);
    // The coordinates of one unit, the unit being the client's active one.
    void pointTexCoordinates(unsigned int unit, VertexDataSet& set, std::int64_t now);

    GLRenderContext* mContext;
    GLSceneManager* mSceneManager;
    Dorvan::SharedPtr<Material> mDefaultMaterial;
};

}  // namespace Velun
