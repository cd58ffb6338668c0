#include "plugins/render/opengl/GLRenderContext.h"

#include <GL/glu.h>

#include <sstream>

#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "texture/Texture.h"
#include "texture/TextureInfo.h"

namespace Velun {

namespace {

void logGLError(char const* prefix, GLenum code) {
    std::ostringstream text;
    text << prefix << gluErrorString(code);
    VelunCore::getLogger("glrendercontext")->error(text.str());
}

// Sets made outside a context have nobody to ask whether GL is usable; they delete
// their names only when GL has been set up in this process.
void deleteBuffersDirectly(unsigned int const* names, unsigned int count) {
    if (!glDeleteBuffers)
        return;
    for (unsigned int i = 0; i < count; ++i) {
        if (names[i] != 0)
            glDeleteBuffers(1, &names[i]);
    }
}

}  // namespace

GLRenderContext* GLRenderContext::sCurrent = nullptr;

GLRenderContext::DataIdSet::DataIdSet(unsigned int providerId)
    : ResourceData(providerId), mVertexBuffer(0), mColorBuffer(0), mNormalBuffer(0), mTexCoordBuffer(0),
      mFogCoordBuffer(0), mSecondaryColorBuffer(0), mVertexStamp(0), mColorStamp(0), mNormalStamp(0),
      mTexCoordStamp(0), mFogCoordStamp(0), mSecondaryColorStamp(0), mOwner(nullptr) {}

GLRenderContext::DataIdSet::~DataIdSet() {
    unsigned int const names[] = {mVertexBuffer,   mColorBuffer,    mNormalBuffer,
                                  mTexCoordBuffer, mFogCoordBuffer, mSecondaryColorBuffer};
    if (GLRenderContext* owner = mOwner) {
        owner->forgetDataIdSet(this);
        owner->releaseBuffers(names, 6);
    } else {
        deleteBuffersDirectly(names, 6);
    }
}

GLRenderContext::IndexIdSet::IndexIdSet(unsigned int providerId, unsigned int bufferId, std::int64_t stamp)
    : ResourceData(providerId), mBufferId(bufferId), mTimeStamp(stamp), mOwner(nullptr) {}

GLRenderContext::IndexIdSet::~IndexIdSet() {
    if (GLRenderContext* owner = mOwner) {
        owner->forgetIndexIdSet(this);
        owner->releaseBuffers(&mBufferId, 1);
    } else {
        deleteBuffersDirectly(&mBufferId, 1);
    }
}

GLRenderContext::TexIdSet::TexIdSet(unsigned int providerId, unsigned int textureId, std::int64_t stamp)
    : ResourceData(providerId), mTextureId(textureId), mTimeStamp(stamp), mOwner(nullptr) {}

GLRenderContext::TexIdSet::~TexIdSet() {
    if (GLRenderContext* owner = mOwner) {
        owner->forgetTexIdSet(this);
        owner->releaseTexture(mTextureId);
    } else if (mTextureId > 0 && glIsTexture(mTextureId)) {
        glDeleteTextures(1, &mTextureId);
    }
}

GLRenderContext::GLRenderContext(GLRenderEngine* engine)
    : mEngine(engine), mProviderId(VelunCore::getSingleton().getResourceManager().createResourceProviderId()),
      mPointSpritesAvailable(false), mUseIndexBuffers(false), mUseVertexBuffers(false), mMaxTextureUnits(1),
      mMaxPointSize(1.0f), mActiveTextureUnits(0), mBufferLoads(0), mTextureLoads(0), mLost(true) {}

GLRenderContext::~GLRenderContext() {
    // Each set's destructor hands its names back to releaseBuffers/releaseTexture,
    // which delete them while GL is ours and drop them once it has ended.
    while (!mIdSets.empty())
        delete *mIdSets.begin();
    deletePending();
    if (sCurrent == this)
        sCurrent = nullptr;
    if (ResourceManager* resources = VelunCore::getSingleton().findResourceManager())
        resources->returnResourceProviderId(mProviderId);
}

RenderEngine* GLRenderContext::getRenderEngine() { return mEngine; }

void GLRenderContext::beginFrame() { deletePending(); }

void GLRenderContext::endFrame() {}

void GLRenderContext::refreshCapabilities() {
    if (GLEW_ARB_point_sprite)
        mPointSpritesAvailable = true;
    if (GLEW_ARB_vertex_buffer_object) {
        mUseIndexBuffers = true;
        mUseVertexBuffers = true;
    }
    GLint units = 0;
    glGetIntegerv(GL_MAX_TEXTURE_UNITS, &units);
    if (units > 0)
        mMaxTextureUnits = static_cast<unsigned int>(units);
    GLfloat pointSizes[2] = {1.0f, 1.0f};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, pointSizes);
    mMaxPointSize = pointSizes[1];
}

void GLRenderContext::makeCurrent() {
    if (sCurrent && sCurrent != this) {
        // SDL replaced the GL context: the other context's names died with it.
        sCurrent->mLost = true;
        sCurrent->mPendingBuffers.clear();
        sCurrent->mPendingTextures.clear();
    }
    sCurrent = this;
    mLost = false;
}

void GLRenderContext::releaseCurrent() {
    if (sCurrent == this)
        sCurrent = nullptr;
    mLost = true;
    mPendingBuffers.clear();
    mPendingTextures.clear();
}

void GLRenderContext::contextEnded() {
    if (sCurrent)
        sCurrent->releaseCurrent();
}

bool GLRenderContext::isCurrent() const { return sCurrent == this && !mLost; }

void GLRenderContext::setEnabled(GLenum capability, bool on) {
    if (on)
        glEnable(capability);
    else
        glDisable(capability);
}

void GLRenderContext::setClientStateEnabled(GLenum array, bool on) {
    if (on)
        glEnableClientState(array);
    else
        glDisableClientState(array);
}

GLenum GLRenderContext::toGLType(DataType::Type type) const {
    switch (type) {
    case DataType::Float:
        return GL_FLOAT;
    case DataType::Double:
        return GL_DOUBLE;
    case DataType::Int:
        return GL_INT;
    case DataType::Short:
        return GL_SHORT;
    case DataType::Bool:
        return GL_BOOL;
    case DataType::UnsignedByte:
        return GL_UNSIGNED_BYTE;
    case DataType::UnsignedShort:
        return GL_UNSIGNED_SHORT;
    case DataType::UnsignedInt:
        return GL_UNSIGNED_INT;
    default:
        return GL_BYTE;
    }
}

GLenum GLRenderContext::toGLFormat(Color::Format format) const {
    switch (format) {
    case Color::ColorIndex:
    case Color::Luminance:
        return GL_LUMINANCE;
    case Color::Rgb:
        return GL_RGB;
    case Color::Rgba:
        return GL_RGBA;
    case Color::Bgr:
        return GL_BGR;
    case Color::Bgra:
        return GL_BGRA;
    default:
        return 0;
    }
}

GLenum GLRenderContext::toGLFormat(TextureInfo const& info) const {
    if (info.getChannels() == 2)
        return GL_LUMINANCE_ALPHA;
    if (info.getChannels() == 1 && info.getColorFormat() == Color::None)
        return GL_ALPHA;
    return toGLFormat(info.getColorFormat());
}

GLenum GLRenderContext::toGLInternalFormat(GLenum format) const {
    switch (format) {
    case GL_BGR:
        return GL_RGB;
    case GL_BGRA:
        return GL_RGBA;
    default:
        return format;
    }
}

unsigned int GLRenderContext::createBuffer(unsigned int size, void const* data, unsigned int bufferId) {
    if (bufferId == 0)
        glGenBuffers(1, &bufferId);
    glBindBuffer(GL_ARRAY_BUFFER, bufferId);
    // Sets loaded again each frame are rare and small; one usage hint serves all.
    glBufferData(GL_ARRAY_BUFFER, size, data, GL_STATIC_DRAW);
    ++mBufferLoads;
    return bufferId;
}

bool GLRenderContext::loadAttribute(unsigned int& bufferId, void const* data, unsigned int size, bool changed,
                                    char const* errorPrefix) {
    if (!data) {
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        return false;
    }
    if (bufferId != 0 && !changed && glIsBuffer(bufferId))
        glBindBuffer(GL_ARRAY_BUFFER, bufferId);
    else
        bufferId = createBuffer(size, data, bufferId);
    GLenum code = glGetError();
    if (code != GL_NO_ERROR) {
        logGLError(errorPrefix, code);
        return false;
    }
    return true;
}

bool GLRenderContext::updateVertexBuffer(VertexDataSet& set, VertexDataSet::Part part, std::int64_t stamp) {
    if (!mUseVertexBuffers)
        return false;
    DataIdSet* ids = static_cast<DataIdSet*>(set.getResourceData(mProviderId));
    if (!ids) {
        ids = new DataIdSet(mProviderId);
        set.setResourceData(*ids);
        adopt(ids);
    }
    unsigned int const count = set.getCount();
    unsigned int* buffer = nullptr;
    std::int64_t* attributeStamp = nullptr;
    void const* data = nullptr;
    unsigned int size = 0;
    char const* prefix = nullptr;
    switch (part) {
    case VertexDataSet::Part::Vertex:
        buffer = &ids->mVertexBuffer;
        attributeStamp = &ids->mVertexStamp;
        data = set.getVertices();
        size = DataType::getSize(set.getVertexType()) * set.getNumVertex() * count;
        prefix = "GL Error while loading buffer: ";
        break;
    case VertexDataSet::Part::Color:
        buffer = &ids->mColorBuffer;
        attributeStamp = &ids->mColorStamp;
        data = set.getColor();
        size = DataType::getSize(set.getColorType()) * set.getNumColor() * count;
        prefix = "GL Error while loading color buffer: ";
        break;
    case VertexDataSet::Part::SecondaryColor:
        buffer = &ids->mSecondaryColorBuffer;
        attributeStamp = &ids->mSecondaryColorStamp;
        data = set.getSecondaryColor();
        size = DataType::getSize(set.getSecondaryColorType()) * set.getNumSecondaryColor() * count;
        prefix = "GL Error while loading secondary color buffer: ";
        break;
    case VertexDataSet::Part::Normal:
        buffer = &ids->mNormalBuffer;
        attributeStamp = &ids->mNormalStamp;
        data = set.getNormals();
        size = DataType::getSize(set.getNormalType()) * count * 3;
        prefix = "GL Error while loading normal buffer: ";
        break;
    case VertexDataSet::Part::FogCoordinate:
        buffer = &ids->mFogCoordBuffer;
        attributeStamp = &ids->mFogCoordStamp;
        data = set.getFogCoordinates();
        size = DataType::getSize(set.getFogCoordinateType()) * count;
        prefix = "GL Error while loading fog coord buffer: ";
        break;
    case VertexDataSet::Part::TexCoordinate:
        // All layers share one buffer, addressed from layer 0.
        buffer = &ids->mTexCoordBuffer;
        attributeStamp = &ids->mTexCoordStamp;
        data = set.getTexCoordinates(0);
        size = DataType::getSize(set.getTexCoordinateType(0)) * set.getNumTexCoord(0) * set.getNumTexLayer() *
               count;
        prefix = "GL Error while loading tex coord buffer: ";
        break;
    default:
        return false;
    }
    bool const changed = set.hasChanged(*attributeStamp);
    if (!loadAttribute(*buffer, data, size, changed, prefix))
        return false;
    *attributeStamp = stamp;
    return true;
}

bool GLRenderContext::updateIndexBuffer(IndexDataSet& set, std::int64_t stamp) {
    void const* indices = set.getIndexList();
    if (!mUseIndexBuffers || !indices)
        return false;
    IndexIdSet* ids = static_cast<IndexIdSet*>(set.getResourceData(mProviderId));
    if (!ids) {
        ids = new IndexIdSet(mProviderId, 0, stamp);
        set.setResourceData(*ids);
        adopt(ids);
    }
    // As for vertex buffers: a name the driver no longer knows is filled again.
    bool const known = ids->mBufferId != 0 && glIsBuffer(ids->mBufferId);
    if (ids->mBufferId == 0)
        glGenBuffers(1, &ids->mBufferId);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, ids->mBufferId);
    if (!known || set.hasChanged(ids->mTimeStamp)) {
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, DataType::getSize(set.getIndexType()) * set.getCount(), indices,
                     GL_STATIC_DRAW);
        ++mBufferLoads;
    }
    GLenum const code = glGetError();
    if (code != GL_NO_ERROR) {
        logGLError("GL Error while loading index buffer: ", code);
        // The next draw starts again from a fresh name rather than a half-loaded one.
        releaseBuffers(&ids->mBufferId, 1);
        ids->mBufferId = 0;
        return false;
    }
    ids->mTimeStamp = stamp;
    return true;
}

std::int64_t GLRenderContext::bindTexture(GLenum target, Texture& texture, std::int64_t stamp) {
    TexIdSet* ids = static_cast<TexIdSet*>(texture.getResourceData(mProviderId));
    if (!ids) {
        unsigned int name = 0;
        glGenTextures(1, &name);
        ids = new TexIdSet(mProviderId, name, stamp);
        glBindTexture(target, name);
        texture.setResourceData(*ids);
        adopt(ids);
        return 0;
    }
    // A name the driver no longer knows counts as never loaded, so the caller fills it
    // again under the same name.
    std::int64_t const previous = glIsTexture(ids->mTextureId) ? ids->mTimeStamp : 0;
    ids->mTimeStamp = stamp;
    glBindTexture(target, ids->mTextureId);
    return previous;
}

unsigned int GLRenderContext::getBufferCount() const {
    unsigned int count = 0;
    for (ResourceData* data : mIdSets) {
        if (DataIdSet* ids = dynamic_cast<DataIdSet*>(data)) {
            unsigned int const names[] = {ids->mVertexBuffer,   ids->mColorBuffer,
                                          ids->mNormalBuffer,   ids->mTexCoordBuffer,
                                          ids->mFogCoordBuffer, ids->mSecondaryColorBuffer};
            for (unsigned int name : names)
                count += name != 0 ? 1 : 0;
        } else if (IndexIdSet* ids = dynamic_cast<IndexIdSet*>(data)) {
            count += ids->mBufferId != 0 ? 1 : 0;
        }
    }
    return count;
}

unsigned int GLRenderContext::getTextureCount() const {
    unsigned int count = 0;
    for (ResourceData* data : mIdSets) {
        if (TexIdSet* ids = dynamic_cast<TexIdSet*>(data))
            count += ids->mTextureId != 0 ? 1 : 0;
    }
    return count;
}

void GLRenderContext::adopt(ResourceData* set) {
    if (DataIdSet* ids = dynamic_cast<DataIdSet*>(set))
        ids->mOwner = this;
    else if (IndexIdSet* ids = dynamic_cast<IndexIdSet*>(set))
        ids->mOwner = this;
    else if (TexIdSet* ids = dynamic_cast<TexIdSet*>(set))
        ids->mOwner = this;
    mIdSets.insert(set);
}

void GLRenderContext::forgetDataIdSet(DataIdSet* set) {
    mIdSets.erase(set);
    set->mOwner = nullptr;
}

void GLRenderContext::forgetIndexIdSet(IndexIdSet* set) {
    mIdSets.erase(set);
    set->mOwner = nullptr;
}

void GLRenderContext::forgetTexIdSet(TexIdSet* set) {
    mIdSets.erase(set);
    set->mOwner = nullptr;
}

void GLRenderContext::releaseBuffers(unsigned int const* names, unsigned int count) {
    if (mLost)
        return;
    for (unsigned int i = 0; i < count; ++i) {
        if (names[i] == 0)
            continue;
        if (isCurrent())
            glDeleteBuffers(1, &names[i]);
        else
            mPendingBuffers.push_back(names[i]);
    }
}

void GLRenderContext::releaseTexture(unsigned int name) {
    if (mLost || name == 0)
        return;
    if (isCurrent())
        glDeleteTextures(1, &name);
    else
        mPendingTextures.push_back(name);
}

void GLRenderContext::deletePending() {
    if (!isCurrent())
        return;
    if (!mPendingBuffers.empty())
        glDeleteBuffers(static_cast<GLsizei>(mPendingBuffers.size()), mPendingBuffers.data());
    if (!mPendingTextures.empty())
        glDeleteTextures(static_cast<GLsizei>(mPendingTextures.size()), mPendingTextures.data());
    mPendingBuffers.clear();
    mPendingTextures.clear();
}

}  // namespace Velun
