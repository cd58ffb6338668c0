#include "plugins/render/opengl/GLMaterialManager.h"

#include <GL/glu.h>

#include <algorithm>
#include <initializer_list>
#include <sstream>

#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "geometry/Drawable.h"
#include "geometry/VertexDataSet.h"
#include "material/Material.h"
#include "plugins/render/opengl/GLError.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "scene/ObjectNode.h"
#include "texture/TextureSource.h"

namespace Velun {

namespace {

const char* const kChannel = "glmaterialmanager";

void sendMaterialColor(GLenum name, Color const& color) {
    GLfloat const values[] = {color.r, color.g, color.b, color.a};
    glMaterialfv(GL_FRONT_AND_BACK, name, values);
}

// Every environment value goes in as a float, names of sources and units included.
void setEnv(GLenum name, GLfloat value) { glTexEnvf(GL_TEXTURE_ENV, name, value); }

void setRgbArgument(int n, GLfloat source, GLfloat operand) {
    setEnv(GL_SOURCE0_RGB + n, source);
    setEnv(GL_OPERAND0_RGB + n, operand);
}

void setAlphaArgument(int n, GLfloat source, GLfloat operand) {
    setEnv(GL_SOURCE0_ALPHA + n, source);
    setEnv(GL_OPERAND0_ALPHA + n, operand);
}

GLint toGLWrap(Texture::TexWrap wrap) {
    switch (wrap) {
    case Texture::Clamp:
        return GL_CLAMP;
    case Texture::ClampToEdge:
        return GL_CLAMP_TO_EDGE;
    case Texture::ClampToBorder:
        return GL_CLAMP_TO_BORDER;
    case Texture::MirroredRepeat:
        return GL_MIRRORED_REPEAT;
    default:
        return GL_REPEAT;
    }
}

GLint toGLMinFilter(Texture const& texture) {
    if (texture.getMinFilter() != Texture::MipMap)
        return texture.getMinFilter() == Texture::Nearest ? GL_NEAREST : GL_LINEAR;
    bool const nearestChoice = texture.getMipMapChooseFilter() == Texture::Nearest;
    bool const nearestFilter = texture.getMipMapFilter() == Texture::Nearest;
    if (nearestChoice)
        return nearestFilter ? GL_NEAREST_MIPMAP_NEAREST : GL_LINEAR_MIPMAP_NEAREST;
    return nearestFilter ? GL_NEAREST_MIPMAP_LINEAR : GL_LINEAR_MIPMAP_LINEAR;
}

// The six faces of a cube map, in the order of its source indices.
const GLenum kCubeFaces[] = {GL_TEXTURE_CUBE_MAP_POSITIVE_X, GL_TEXTURE_CUBE_MAP_NEGATIVE_X,
                             GL_TEXTURE_CUBE_MAP_POSITIVE_Y, GL_TEXTURE_CUBE_MAP_NEGATIVE_Y,
                             GL_TEXTURE_CUBE_MAP_POSITIVE_Z, GL_TEXTURE_CUBE_MAP_NEGATIVE_Z};

const GLenum kTextureTargets[] = {GL_TEXTURE_1D, GL_TEXTURE_2D, GL_TEXTURE_3D, GL_TEXTURE_CUBE_MAP};

// Filters, mipmap levels, wrap modes and border colour of the bound texture.
void sendSampling(GLenum target, Texture const& texture) {
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, toGLMinFilter(texture));
    glTexParameteri(target, GL_TEXTURE_MAG_FILTER,
                    texture.getMagFilter() == Texture::Nearest ? GL_NEAREST : GL_LINEAR);
    if (texture.getMinFilter() == Texture::MipMap) {
        glTexParameteri(target, GL_TEXTURE_BASE_LEVEL, static_cast<GLint>(texture.getMinMipMapLevel()));
        glTexParameteri(target, GL_TEXTURE_MAX_LEVEL, static_cast<GLint>(texture.getMaxMipMapLevel()));
    }
    GLenum const wraps[] = {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R};
    unsigned int const channels = texture.getChannels();
    for (unsigned int channel = 0; channel < channels && channel < 3; ++channel)
        glTexParameteri(target, wraps[channel], toGLWrap(texture.getWrapMode(channel, 0)));
    Color const& border = texture.getBorderColor();
    GLfloat const borderColor[] = {border.r, border.g, border.b, border.a};
    glTexParameterfv(target, GL_TEXTURE_BORDER_COLOR, borderColor);
}

// The modes GL has an environment mode of its own for; 0 for the others (Inherit
// keeps what the unit has, the rest are combinations).
GLfloat toGLEnvMode(Texture::TexMode mode) {
    switch (mode) {
    case Texture::Modulate:
        return GL_MODULATE;
    case Texture::Replace:
        return GL_REPLACE;
    case Texture::Blend:
        return GL_BLEND;
    case Texture::Add:
        return GL_ADD;
    case Texture::Decal:
        return GL_DECAL;
    default:
        return 0;
    }
}

// A combiner argument: where the value comes from and which part of it is taken.
struct Argument {
    GLfloat source;
    GLfloat operand;
};

void combineRgb(GLfloat function, std::initializer_list<Argument> arguments) {
    setEnv(GL_TEXTURE_ENV_MODE, GL_COMBINE);
    setEnv(GL_COMBINE_RGB, function);
    int n = 0;
    for (Argument const& argument : arguments)
        setRgbArgument(n++, argument.source, argument.operand);
}

void combineAlpha(GLfloat function, std::initializer_list<Argument> arguments) {
    setEnv(GL_COMBINE_ALPHA, function);
    int n = 0;
    for (Argument const& argument : arguments)
        setAlphaArgument(n++, argument.source, argument.operand);
}

void sendConstantColor(Texture const& texture) {
    Color const constant = texture.getConstantColor();
    GLfloat const color[] = {constant.r, constant.g, constant.b, constant.a};
    glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, color);
}

// The combiner set-up of the modes that mix units, vertex colour or a constant.
void sendCombination(Texture const& texture, GLenum previousUnit) {
    Argument const texel{GL_TEXTURE, GL_SRC_COLOR};
    Argument const texelAlpha{GL_TEXTURE, GL_SRC_ALPHA};
    Argument const previous{GL_PREVIOUS, GL_SRC_COLOR};
    Argument const previousAlpha{GL_PREVIOUS, GL_SRC_ALPHA};
    switch (texture.getTexMode()) {
    case Texture::PassPrevious:
        combineRgb(GL_REPLACE, {previous});
        combineAlpha(GL_REPLACE, {previousAlpha});
        break;
    case Texture::ModulateColor:
        combineRgb(GL_MODULATE, {texel, previous});
        combineAlpha(GL_REPLACE, {previousAlpha});
        break;
    case Texture::InterpolateByTexture:
        // Blends the unit before this one with the result so far, by this texture.
        combineRgb(GL_INTERPOLATE, {{static_cast<GLfloat>(previousUnit), GL_SRC_COLOR}, previous, texel});
        break;
    case Texture::InterpolateByVertexAlpha:
        combineRgb(GL_INTERPOLATE, {texel, previous, {GL_PRIMARY_COLOR, GL_SRC_ALPHA}});
        combineAlpha(GL_REPLACE, {texelAlpha});
        break;
    case Texture::InterpolateByNextAlpha:
        // The unit after this one (previous + 2) holds the mask.
        combineRgb(GL_INTERPOLATE, {texel, previous, {static_cast<GLfloat>(previousUnit + 2), GL_SRC_ALPHA}});
        combineAlpha(GL_REPLACE, {texelAlpha});
        break;
    case Texture::InterpolateByTextureAlpha:
        combineRgb(GL_INTERPOLATE, {texel, previous, texelAlpha});
        combineAlpha(GL_INTERPOLATE, {texelAlpha, previousAlpha, texelAlpha});
        break;
    case Texture::ModulateConstant: {
        sendConstantColor(texture);
        combineRgb(GL_MODULATE, {texel, {GL_CONSTANT, GL_SRC_COLOR}});
        combineAlpha(GL_MODULATE, {texelAlpha, {GL_CONSTANT, GL_SRC_ALPHA}});
        break;
    }
    default:
        break;
    }
}

}  // namespace

GLMaterialManager::GLMaterialManager(GLRenderContext* context)
    : mContext(context), mSceneManager(nullptr), mDefaultMaterial(new Material()) {}

GLMaterialManager::~GLMaterialManager() {}

void GLMaterialManager::setSceneManager(GLSceneManager* sceneManager) { mSceneManager = sceneManager; }

GLenum GLMaterialManager::toGLTarget(Texture::TextureType type) {
    switch (type) {
    case Texture::Type1D:
        return GL_TEXTURE_1D;
    case Texture::Type2D:
        return GL_TEXTURE_2D;
    case Texture::Type3D:
        return GL_TEXTURE_3D;
    case Texture::TypeCubeMap:
        return GL_TEXTURE_CUBE_MAP;
    default:
        return 0;
    }
}

Dorvan::SharedPtr<Material> GLMaterialManager::getMaterial(Drawable* drawable, ObjectNode* object,
                                                           unsigned int index) {
    Dorvan::SharedPtr<Material> material;
    if (drawable)
        material = drawable->getMaterial(index);
    if (!material && object)
        material = object->getDefaultMaterial(index);
    if (!material)
        material = mDefaultMaterial;
    return material;
}

bool GLMaterialManager::applyMaterial(Dorvan::SharedPtr<Material> material) {
    if (!material)
        return false;
    if (mSceneManager)
        mSceneManager->applyRenderSettings(material->getRenderSettings(), true);
    applyMaterialState(*material);
    return true;
}

void GLMaterialManager::applyMaterialState(Material& material) {
    if (material.useMaterialColor()) {
        // The mode first: enabling copies the current colour into what the mode names.
        glColorMaterial(GL_FRONT, GL_AMBIENT_AND_DIFFUSE);
        glEnable(GL_COLOR_MATERIAL);
    } else {
        glDisable(GL_COLOR_MATERIAL);
        sendMaterialColor(GL_AMBIENT, material.getAmbientMaterialColor());
        sendMaterialColor(GL_DIFFUSE, material.getDiffuseMaterialColor());
    }
    // Colour material covers ambient and diffuse only.
    sendMaterialColor(GL_SPECULAR, material.getSpecularMaterialColor());
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, material.getShininess());

    if (material.useDefaultVertexColor()) {
        Color const color = material.getDefaultVertexColor();
        glColor3f(color.r, color.g, color.b);
    } else {
        glColor3f(1.0f, 1.0f, 1.0f);
    }

    if (material.useBlending()) {
        glEnable(GL_BLEND);
        Color const blend = material.getBlendColor();
        switch (material.getBlendMode()) {
        case Material::AlphaBlend:
            glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
            break;
        case Material::ConstantColorBlend:
            glBlendColor(blend.r, blend.g, blend.b, blend.a);
            glBlendFunc(GL_CONSTANT_COLOR, GL_ONE_MINUS_CONSTANT_COLOR);
            break;
        case Material::ConstantAlphaBlend:
            glBlendColor(blend.r, blend.g, blend.b, blend.a);
            glBlendFunc(GL_CONSTANT_ALPHA, GL_ONE_MINUS_CONSTANT_ALPHA);
            break;
        default:
            break;
        }
    } else {
        glDisable(GL_BLEND);
    }

    setPointSprites(material);

    if (material.useAlphaTest()) {
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GREATER, material.getAlphaTestValue());
    } else {
        glDisable(GL_ALPHA_TEST);
    }
}

void GLMaterialManager::setPointSprites(Material const& material) {
    // Without the extension sprites draw as plain points of the current size.
    if (!mContext->hasPointSprites())
        return;
    if (material.usePointSprites()) {
        float const size = material.getSpriteSize();
        glEnable(GL_POINT_SPRITE_ARB);
        glPointSize(size);
        glPointParameterfARB(GL_POINT_FADE_THRESHOLD_SIZE_ARB, 60.0f);
        GLfloat const attenuation[] = {1.0f, 0.0f, 0.01f};
        glPointParameterfvARB(GL_POINT_DISTANCE_ATTENUATION_ARB, attenuation);
        glPointParameterfARB(GL_POINT_SIZE_MIN_ARB, 1.0f);
        glPointParameterfARB(GL_POINT_SIZE_MAX_ARB, size);
    } else {
        // GL's own point state, so plain points after sprites are not sprite-sized.
        glDisable(GL_POINT_SPRITE_ARB);
        glPointSize(1.0f);
        glPointParameterfARB(GL_POINT_FADE_THRESHOLD_SIZE_ARB, 1.0f);
        GLfloat const attenuation[] = {1.0f, 0.0f, 0.0f};
        glPointParameterfvARB(GL_POINT_DISTANCE_ATTENUATION_ARB, attenuation);
        glPointParameterfARB(GL_POINT_SIZE_MIN_ARB, 0.0f);
        glPointParameterfARB(GL_POINT_SIZE_MAX_ARB, mContext->getMaxPointSize());
    }
    // Coordinate replacement is per unit; setupTextures sets it on every unit it binds.
    glTexEnvi(GL_POINT_SPRITE_ARB, GL_COORD_REPLACE_ARB, material.usePointSprites() ? GL_TRUE : GL_FALSE);
}

bool GLMaterialManager::setupTextures(Dorvan::SharedPtr<Material> material, VertexDataSet* set) {
    if (!material || !set) {
        disableTextures();
        return true;
    }
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    std::int64_t const now = timer ? timer->getTimestamp() : 0;
    Dorvan::Vector<unsigned int> const& indices = set->getTexturesIndices();
    unsigned int count = indices.size();
    if (count > mContext->getMaxTextureUnits())
        count = mContext->getMaxTextureUnits();
    bool const sprites = material->usePointSprites() && mContext->hasPointSprites();

    GLenum previousUnit = 0;
    for (unsigned int i = 0; i < count; ++i) {
        Dorvan::SharedPtr<Texture> texture = material->getTexture(indices.get(i));
        glActiveTexture(GL_TEXTURE0 + i);
        glClientActiveTexture(GL_TEXTURE0 + i);
        if (!texture) {
            disableUnit(i);
        } else {
            GLenum const target = bindTexture(*texture, now, previousUnit);
            // Only one target of a unit may be on, or the highest one wins.
            for (GLenum other : kTextureTargets)
                mContext->setEnabled(other, other == target);
            if (mContext->hasPointSprites())
                glTexEnvi(GL_POINT_SPRITE_ARB, GL_COORD_REPLACE_ARB, sprites ? GL_TRUE : GL_FALSE);

            pointTexCoordinates(i, *set, now);
        }
        previousUnit = GL_TEXTURE0 + i;
    }
    unsigned int const active = mContext->getActiveTextureUnits();
    for (unsigned int i = count; i < active; ++i)
        disableUnit(i);
    mContext->setActiveTextureUnits(count);
    return true;
}

void GLMaterialManager::setupTexCoordinates(Material& material, VertexDataSet& set) {
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    std::int64_t const now = timer ? timer->getTimestamp() : 0;
    Dorvan::Vector<unsigned int> const& indices = set.getTexturesIndices();
    unsigned int const count = std::min(indices.size(), mContext->getMaxTextureUnits());
    for (unsigned int i = 0; i < count; ++i) {
        if (!material.getTexture(indices.get(i)))
            continue;
        glClientActiveTexture(GL_TEXTURE0 + i);
        pointTexCoordinates(i, set, now);
    }
}

void GLMaterialManager::pointTexCoordinates(unsigned int unit, VertexDataSet& set, std::int64_t now) {
    unsigned int const layer = mContext->usesVertexBuffers() ? 0 : unit;
    void const* pointer = set.getTexCoordinates(layer);
    bool buffered = false;
    if (pointer && set.isBufferable() &&
        mContext->updateVertexBuffer(set, VertexDataSet::Part::TexCoordinate, now)) {
        // All layers lie interleaved in one buffer; layer i starts i layers in.
        std::size_t const offset =
            static_cast<std::size_t>(DataType::getSize(set.getTexCoordinateType(unit))) *
            set.getNumTexCoord(0) * unit;
        pointer = reinterpret_cast<void const*>(offset);
        buffered = true;
    } else if (pointer) {
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        pointer = set.getTexCoordinates(unit);
    }
    mContext->setClientStateEnabled(GL_TEXTURE_COORD_ARRAY, buffered || pointer);
    if (buffered || pointer)
        glTexCoordPointer(set.getNumTexCoord(0), mContext->toGLType(set.getTexCoordinateType(unit)),
                          set.getStride(VertexDataSet::Part::TexCoordinate), pointer);
}

void GLMaterialManager::disableTextures() {
    unsigned int const active = mContext->getActiveTextureUnits();
    for (unsigned int i = 0; i < active; ++i)
        disableUnit(i);
    mContext->setActiveTextureUnits(0);
}

void GLMaterialManager::disableUnit(unsigned int unit) {
    glActiveTexture(GL_TEXTURE0 + unit);
    glClientActiveTexture(GL_TEXTURE0 + unit);
    for (GLenum target : kTextureTargets)
        glDisable(target);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    if (mContext->hasPointSprites())
        glTexEnvi(GL_POINT_SPRITE_ARB, GL_COORD_REPLACE_ARB, GL_FALSE);
}

GLenum GLMaterialManager::bindTexture(Texture& texture, std::int64_t now, GLenum previousUnit) {
    GLenum const target = toGLTarget(texture.getTextureType());
    if (target == 0)
        return 0;
    std::int64_t const previous = mContext->bindTexture(target, texture, now);
    bool const changed = previous == 0 || texture.hasChanged(previous);
    updateTextureData(target, texture, changed, previous, 0);
    updateTextureParameters(target, texture, previousUnit);
    return target;
}

bool GLMaterialManager::updateTextureData(GLenum target, Texture& texture, bool changed, std::int64_t stamp,
                                          unsigned int index) {
    bool const mipmapped = texture.getMinFilter() == Texture::MipMap;
    bool generate = texture.doGenerateMipMaps();
    unsigned int const faces = target == GL_TEXTURE_CUBE_MAP ? 6 : 1;
    bool loaded = false;

    if (mipmapped && !generate) {
        // Levels that all show the same image are built by generation: the same
        // full-size image at every level would leave the texture incomplete.
        Dorvan::SharedPtr<TextureSource> first = texture.getTextureSource(index, texture.getMinMipMapLevel());
        bool sameSource = true;
        for (unsigned int level = texture.getMinMipMapLevel() + 1; level <= texture.getMaxMipMapLevel();
             ++level) {
            if (texture.getTextureSource(index, level) != first)
                sameSource = false;
        }
        generate = sameSource;
    }

    for (unsigned int face = 0; face < faces; ++face) {
        GLenum const imageTarget = faces == 6 ? kCubeFaces[face] : target;
        unsigned int const sourceIndex = faces == 6 ? face : index;
        if (mipmapped && !generate) {
            for (unsigned int level = texture.getMinMipMapLevel(); level <= texture.getMaxMipMapLevel();
                 ++level) {
                Dorvan::SharedPtr<TextureSource> source = texture.getTextureSource(sourceIndex, level);
                if (source && (changed || source->hasChanged(stamp))) {
                    loadTextureData(imageTarget, *source, level);
                    loaded = true;
                }
            }
        } else {
            Dorvan::SharedPtr<TextureSource> source = texture.getTextureSource(sourceIndex, 0);
            if (source && (changed || source->hasChanged(stamp))) {
                loadTextureData(imageTarget, *source, 0);
                loaded = true;
            }
        }
    }
    if (loaded && generate) {
        if (glGenerateMipmap)
            glGenerateMipmap(target);
        else if (target == GL_TEXTURE_2D)
            buildMipmaps2D(texture, index);
    }

    GLenum const code = glGetError();
    if (code != GL_NO_ERROR) {
        logGLError(kChannel, "GL Error while updating texture data: ", code);
        return false;
    }
    return true;
}

void GLMaterialManager::buildMipmaps2D(Texture& texture, unsigned int index) {
    Dorvan::SharedPtr<TextureSource> source = texture.getTextureSource(index, 0);
    if (!source)
        return;
    TextureInfo const& info = source->getTextureInfo();
    GLenum const format = mContext->toGLFormat(info);
    gluBuild2DMipmaps(GL_TEXTURE_2D, mContext->toGLInternalFormat(format), info.getWidth(), info.getHeight(),
                      format, mContext->toGLType(info.getDataType()), source->getTextureData());
}

void GLMaterialManager::loadTextureData(GLenum target, TextureSource& source, unsigned int level) {
    TextureInfo const& info = source.getTextureInfo();
    GLenum const format = mContext->toGLFormat(info);
    GLint const internalFormat = static_cast<GLint>(mContext->toGLInternalFormat(format));
    GLenum const type = mContext->toGLType(info.getDataType());
    void const* data = source.getTextureData();
    switch (target) {
    case GL_TEXTURE_1D:
        glTexImage1D(target, level, internalFormat, info.getWidth(), 0, format, type, data);
        break;
    case GL_TEXTURE_3D:
        glTexImage3D(target, level, internalFormat, info.getWidth(), info.getHeight(), info.getDepth(), 0,
                     format, type, data);
        break;
    default:
        glTexImage2D(target, level, internalFormat, info.getWidth(), info.getHeight(), 0, format, type, data);
        break;
    }
    mContext->countTextureLoad();
    GLenum const code = glGetError();
    if (code != GL_NO_ERROR)
        logGLError(kChannel, "GL Error while loading texture data: ", code);
}

void GLMaterialManager::updateTextureParameters(GLenum target, Texture& texture, GLenum previousUnit) {
    sendSampling(target, texture);
    GLenum code = glGetError();
    if (code != GL_NO_ERROR) {
        logGLError(kChannel, "GL Error while updating Texture parameter: ", code);
        return;
    }
    Texture::TexMode const mode = texture.getTexMode();
    if (GLfloat const simple = toGLEnvMode(mode)) {
        // Blending mixes towards the unit's colour: this texture's constant colour, not
        // what an earlier texture on the unit left there.
        if (mode == Texture::Blend)
            sendConstantColor(texture);
        setEnv(GL_TEXTURE_ENV_MODE, simple);
    } else {
        sendCombination(texture, previousUnit);
    }
    code = glGetError();
    if (code != GL_NO_ERROR) {
        std::ostringstream prefix;
        prefix << "GL Error while updating Texture mode [" << static_cast<int>(mode) << "]: ";
        logGLError(kChannel, prefix.str(), code);
    }
}

}  // namespace Velun
