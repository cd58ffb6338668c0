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
    // Buffer names and upload stamps of one vertex data set in one context, one entry per
    // attribute.
    class VELUN_EXPORT DataIdSet : public ResourceData {
    public:
        explicit DataIdSet(unsigned int providerId);
        ~DataIdSet() override;

        // The buffer holding an attribute, 0 before its first upload.
        unsigned int getBuffer(VertexDataSet::Part part) const { return entry(part).mBuffer; }
        void setBuffer(VertexDataSet::Part part, unsigned int id) { entry(part).mBuffer = id; }
        // The frame stamp of the attribute's last upload or check, 0 before the first.
        std::int64_t getStamp(VertexDataSet::Part part) const { return entry(part).mStamp; }

    private:
        friend class GLRenderContext;

        struct Entry {
            unsigned int mBuffer = 0;
            std::int64_t mStamp = 0;
        };
        static const unsigned int kPartCount = 6;

        Entry& entry(VertexDataSet::Part part) { return mEntries[static_cast<unsigned int>(part)]; }
        const Entry& entry(VertexDataSet::Part part) const {
            return mEntries[static_cast<unsigned int>(part)];
        }
        unsigned int collectBuffers(unsigned int* names) const;

        Entry mEntries[kPartCount];
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
    DataIdSet& findOrMakeDataIdSet(VertexDataSet& set);
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
