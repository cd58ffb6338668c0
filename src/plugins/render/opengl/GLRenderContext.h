#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "core/ResourceData.h"
#include "geometry/DataType.h"
#include "geometry/IndexDataSet.h"
#include "geometry/VertexDataSet.h"
#include "render/RenderContext.h"
#include "scene/Color.h"
#include "velun_export.h"

namespace Velun {

class GLRenderEngine;
class Texture;
class TextureInfo;

// The GL state of one window: the only place that knows GL object names. Buffer and
// texture objects are made on demand and hung on the engine's data sets and textures
// as id sets (ResourceData under this context's provider id); time stamps decide when
// data travels to the card again. Without the vertex buffer extension every geometry
// is drawn from client arrays.
//
// GL objects never leak: when a data set or texture goes away, its names are deleted
// at once while this context is current, otherwise at this context's next frame; the
// context deletes every name it still holds when it ends.
class VELUN_EXPORT GLRenderContext : public RenderContext {
public:
    // Buffer names and upload stamps of one vertex data set in one context.
    class VELUN_EXPORT DataIdSet : public ResourceData {
    public:
        explicit DataIdSet(unsigned int providerId);
        ~DataIdSet() override;

        unsigned int getVertexBuffer() const { return mVertexBuffer; }
        void setVertexBuffer(unsigned int id) { mVertexBuffer = id; }
        unsigned int getColorBuffer() const { return mColorBuffer; }
        void setColorBuffer(unsigned int id) { mColorBuffer = id; }
        unsigned int getNormalBuffer() const { return mNormalBuffer; }
        void setNormalBuffer(unsigned int id) { mNormalBuffer = id; }
        unsigned int getTexCoordBuffer() const { return mTexCoordBuffer; }
        void setTexCoordBuffer(unsigned int id) { mTexCoordBuffer = id; }
        unsigned int getFogCoordBuffer() const { return mFogCoordBuffer; }
        void setFogCoordBuffer(unsigned int id) { mFogCoordBuffer = id; }
        unsigned int getSecondaryColorBuffer() const { return mSecondaryColorBuffer; }
        void setSecondaryColorBuffer(unsigned int id) { mSecondaryColorBuffer = id; }

        std::int64_t getVertexStamp() const { return mVertexStamp; }
        void setVertexStamp(std::int64_t stamp) { mVertexStamp = stamp; }
        std::int64_t getColorStamp() const { return mColorStamp; }
        void setColorStamp(std::int64_t stamp) { mColorStamp = stamp; }
        std::int64_t getNormalStamp() const { return mNormalStamp; }
        void setNormalStamp(std::int64_t stamp) { mNormalStamp = stamp; }
        std::int64_t getTexCoordStamp() const { return mTexCoordStamp; }
        void setTexCoordStamp(std::int64_t stamp) { mTexCoordStamp = stamp; }
        std::int64_t getFogCoordStamp() const { return mFogCoordStamp; }
        void setFogCoordStamp(std::int64_t stamp) { mFogCoordStamp = stamp; }
        std::int64_t getSecondaryColorStamp() const { return mSecondaryColorStamp; }
        void setSecondaryColorStamp(std::int64_t stamp) { mSecondaryColorStamp = stamp; }

    private:
        friend class GLRenderContext;

        unsigned int mVertexBuffer;
        unsigned int mColorBuffer;
        unsigned int mNormalBuffer;
        unsigned int mTexCoordBuffer;
        unsigned int mFogCoordBuffer;
        unsigned int mSecondaryColorBuffer;
        std::int64_t mVertexStamp;
        std::int64_t mColorStamp;
        std::int64_t mNormalStamp;
        std::int64_t mTexCoordStamp;
        std::int64_t mFogCoordStamp;
        std::int64_t mSecondaryColorStamp;
        GLRenderContext* mOwner;
    };

    // Element array buffer name and upload stamp of one index data set.
    class VELUN_EXPORT IndexIdSet : public ResourceData {
    public:
        IndexIdSet(unsigned int providerId, unsigned int bufferId, std::int64_t stamp);
        ~IndexIdSet() override;

        unsigned int getBufferId() const { return mBufferId; }
        void setBufferId(unsigned int id) { mBufferId = id; }
        std::int64_t getTimeStamp() const { return mTimeStamp; }
        void setTimeStamp(std::int64_t stamp) { mTimeStamp = stamp; }

    private:
        friend class GLRenderContext;

        unsigned int mBufferId;
        std::int64_t mTimeStamp;
        GLRenderContext* mOwner;
    };

    // Texture object name and upload stamp of one texture. A set made outside a
    // context deletes its texture itself when it ends.
    class VELUN_EXPORT TexIdSet : public ResourceData {
    public:
        TexIdSet(unsigned int providerId, unsigned int textureId, std::int64_t stamp);
        ~TexIdSet() override;

        unsigned int getTextureId() const { return mTextureId; }
        void setTextureId(unsigned int id) { mTextureId = id; }
        std::int64_t getTimeStamp() const { return mTimeStamp; }
        void setTimeStamp(std::int64_t stamp) { mTimeStamp = stamp; }

    private:
        friend class GLRenderContext;

        unsigned int mTextureId;
        std::int64_t mTimeStamp;
        GLRenderContext* mOwner;
    };

    explicit GLRenderContext(GLRenderEngine* engine);
    ~GLRenderContext() override;

    RenderEngine* getRenderEngine() override;
    // Deletes the GL names of data and textures destroyed while this context was not
    // current.
    void beginFrame() override;
    void endFrame() override;

    // Key of this context in every ResourceContainer.
    unsigned int getProviderId() const { return mProviderId; }

    // Reads the extension flags again; call once GLEW has run. Flags only ever turn on.
    void refreshCapabilities();
    bool usesIndexBuffers() const { return mUseIndexBuffers; }
    bool usesVertexBuffers() const { return mUseVertexBuffers; }
    bool hasPointSprites() const { return mPointSpritesAvailable; }
    // Fixed-function texture units of the driver (1 until GL is set up).
    unsigned int getMaxTextureUnits() const { return mMaxTextureUnits; }
    // Largest point size the driver draws (1 until GL is set up).
    float getMaxPointSize() const { return mMaxPointSize; }

    // The window calls these around the life of its GL context. Only one GL context
    // exists at a time: making one current marks the former one's objects as gone.
    void makeCurrent();
    void releaseCurrent();
    bool isCurrent() const;
    // The GL context of the current window has ended (SDL video stopped): its names
    // are gone with it.
    static void contextEnded();

    void setEnabled(GLenum capability, bool on);
    void setClientStateEnabled(GLenum array, bool on);

    GLenum toGLType(DataType::Type type) const;
    // Pixel format of a channel order: GL_BGR and GL_BGRA for the reversed orders, 0
    // for None.
    GLenum toGLFormat(Color::Format format) const;
    // Pixel format of an image, which also looks at the channel count: two channels
    // are luminance and alpha, one channel without a format is alpha.
    GLenum toGLFormat(TextureInfo const& info) const;
    // The internal format GL keeps for a pixel format (GL_RGB for GL_BGR, ...).
    GLenum toGLInternalFormat(GLenum format) const;

    // Loads `size` bytes into array buffer `bufferId` (a new one when 0), leaving it
    // bound; returns the name.
    unsigned int createBuffer(unsigned int size, void const* data, unsigned int bufferId);
    // True when the attribute now lies in a bound buffer object, so the caller passes a
    // buffer offset instead of a pointer; false means: use the client pointer (or no
    // array when the pointer is null).
    bool updateVertexBuffer(VertexDataSet& set, VertexDataSet::Part part, std::int64_t stamp);
    // The same for the element array.
    bool updateIndexBuffer(IndexDataSet& set, std::int64_t stamp);
    // Binds the texture's object (made on first use) and returns the stamp of its last
    // upload, 0 when it holds no pixels yet: the caller then uploads.
    std::int64_t bindTexture(GLenum target, Texture& texture, std::int64_t stamp);

    // Texture units the last material set-up left enabled, so the next one switches off
    // the rest whatever pass it belongs to.
    unsigned int getActiveTextureUnits() const { return mActiveTextureUnits; }
    void setActiveTextureUnits(unsigned int count) { mActiveTextureUnits = count; }

    // Upload counters, for statistics and tests: buffer loads (glBufferData) and
    // texture image loads, since the context began.
    unsigned int getBufferLoadCount() const { return mBufferLoads; }
    unsigned int getTextureLoadCount() const { return mTextureLoads; }
    void countTextureLoad() { ++mTextureLoads; }
    // GL names this context currently holds on live data (buffers and textures).
    unsigned int getBufferCount() const;
    unsigned int getTextureCount() const;

    GLRenderContext(GLRenderContext const&) = delete;
    GLRenderContext& operator=(GLRenderContext const&) = delete;

private:
    void adopt(ResourceData* set);
    void forgetDataIdSet(DataIdSet* set);
    void forgetIndexIdSet(IndexIdSet* set);
    void forgetTexIdSet(TexIdSet* set);
    void releaseBuffers(unsigned int const* names, unsigned int count);
    void releaseTexture(unsigned int name);
    void deletePending();
    bool loadAttribute(unsigned int& bufferId, void const* data, unsigned int size, bool changed,
                       char const* errorPrefix);

    GLRenderEngine* mEngine;
    unsigned int mProviderId;
    bool mPointSpritesAvailable;
    bool mUseIndexBuffers;
    bool mUseVertexBuffers;
    unsigned int mMaxTextureUnits;
    float mMaxPointSize;
    unsigned int mActiveTextureUnits;
    unsigned int mBufferLoads;
    unsigned int mTextureLoads;
    std::unordered_set<ResourceData*> mIdSets;
    std::vector<unsigned int> mPendingBuffers;
    std::vector<unsigned int> mPendingTextures;
    // Set once the GL context these names belong to has ended.
    bool mLost;
    static GLRenderContext* sCurrent;
};

}  // namespace Velun
