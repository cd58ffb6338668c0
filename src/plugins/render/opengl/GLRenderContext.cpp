#include "plugins/render/opengl/GLRenderContext.h"

#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "plugins/render/opengl/GLError.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "texture/Texture.h"
#include "texture/TextureInfo.h"

namespace Velun {

namespace {

using Part = VertexDataSet::Part;

// Where an attribute's values lie in a set and how many bytes they take.
struct AttributeArray {
    void const* data;
    unsigned int size;
};

AttributeArray findAttribute(VertexDataSet const& set, Part part) {
    unsigned int const count = set.getCount();
    switch (part) {
    case Part::Vertex:
        return {set.getVertices(), DataType::getSize(set.getVertexType()) * set.getNumVertex() * count};
    case Part::Color:
        return {set.getColor(), DataType::getSize(set.getColorType()) * set.getNumColor() * count};
    case Part::SecondaryColor:
        return {set.getSecondaryColor(),
                DataType::getSize(set.getSecondaryColorType()) * set.getNumSecondaryColor() * count};
    case Part::Normal:
        return {set.getNormals(), DataType::getSize(set.getNormalType()) * 3 * count};
    case Part::FogCoordinate:
        return {set.getFogCoordinates(), DataType::getSize(set.getFogCoordinateType()) * count};
    case Part::TexCoordinate:
        // All layers share one buffer, addressed from layer 0.
        return {set.getTexCoordinates(0), DataType::getSize(set.getTexCoordinateType(0)) *
                                              set.getNumTexCoord(0) * set.getNumTexLayer() * count};
    }
    return {nullptr, 0};
}

// Indexed by Part.
char const* const kLoadErrors[] = {
    "GL Error while loading buffer: ",
    "GL Error while loading color buffer: ",
    "GL Error while loading secondary color buffer: ",
    "GL Error while loading normal buffer: ",
    "GL Error while loading fog coord buffer: ",
    "GL Error while loading tex coord buffer: ",
};

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

GLRenderContext::DataIdSet::DataIdSet(unsigned int providerId) : ResourceData(providerId), mOwner(nullptr) {}

GLRenderContext::DataIdSet::~DataIdSet() {
    unsigned int names[kPartCount];
    unsigned int const count = collectBuffers(names);
    if (GLRenderContext* owner = mOwner) {
        owner->forgetDataIdSet(this);
        owner->releaseBuffers(names, count);
    } else {
        deleteBuffersDirectly(names, count);
    }
}

unsigned int GLRenderContext::DataIdSet::collectBuffers(unsigned int* names) const {
    unsigned int count = 0;
    for (Entry const& entry : mEntries) {
        if (entry.mBuffer != 0)
            names[count++] = entry.mBuffer;
    }
    return count;
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
        logGLError("glrendercontext", errorPrefix, code);
        return false;
    }
    return true;
}

GLRenderContext::DataIdSet& GLRenderContext::findOrMakeDataIdSet(VertexDataSet& set) {
    DataIdSet* ids = static_cast<DataIdSet*>(set.getResourceData(mProviderId));
    if (!ids) {
        ids = new DataIdSet(mProviderId);
        set.setResourceData(*ids);
        adopt(ids);
    }
    return *ids;
}

bool GLRenderContext::updateVertexBuffer(VertexDataSet& set, Part part, std::int64_t stamp) {
    if (!mUseVertexBuffers || static_cast<unsigned int>(part) >= DataIdSet::kPartCount)
        return false;
    DataIdSet::Entry& entry = findOrMakeDataIdSet(set).entry(part);
    AttributeArray const array = findAttribute(set, part);
    bool const changed = set.hasChanged(entry.mStamp);
    if (!loadAttribute(entry.mBuffer, array.data, array.size, changed,
                       kLoadErrors[static_cast<unsigned int>(part)]))
        return false;
    entry.mStamp = stamp;
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
        logGLError("glrendercontext", "GL Error while loading index buffer: ", code);
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
            unsigned int names[DataIdSet::kPartCount];
            count += ids->collectBuffers(names);
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
