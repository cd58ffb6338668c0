#pragma once

#include <cstdint>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "foundation/SharedPtr.h"
#include "foundation/Stack.h"
#include "geometry/AbstractGeometryData.h"
#include "geometry/ElementData.h"
#include "geometry/GeometryData.h"
#include "geometry/IndexDataSet.h"
#include "geometry/VertexData.h"
#include "scene/Color.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// The storage of one particle cloud, kept as drawable geometry at all times: one vertex
// per slot holds the position, the other state lives in arrays beside it, and the living
// particles are a list of point indices rebuilt by updateData. A dead particle keeps its
// slot and vertex and only drops out of the list; slots are reused last freed first, so
// the arrays never shrink or move while a cloud runs.
//
// Show a cloud by handing getGeometryData() to a GeometrySubobject whose material sets
// point sprites and a sprite size; per-particle size is stored but not drawn. updateData
// tells that subobject when the cloud's box changes, so culling follows a moving cloud.
//
// Single particles are reached through a current slot (setParticle, nextParticle, the
// accessors); whole-cloud work (force models) goes through advance and the position and
// velocity arrays, without a call per particle. Nothing is stored before initialize.
class VELUN_EXPORT ParticleData {
public:
    // The state of one particle apart from its position.
    struct Particle {
        bool active;
        Dorvan::TVector<float, 3> velocity;
        std::int64_t deathTime;  // ms, 0 for never
        float size;
    };

    // The living slots as 32-bit point indices; entries beyond the count are stale.
    class VELUN_EXPORT ParticleIndexData : public AbstractGeometryData, public IndexDataSet {
    public:
        ParticleIndexData();
        ~ParticleIndexData() override;

        const void* getIndexList() const override;
        unsigned int getCount() const override;
        DataType::Type getIndexType() const override;

        // Room for `slots` entries, detached from copies, to be filled from entry 0.
        std::uint32_t* beginRebuild(unsigned int slots);
        // Sets the count and stamps the list.
        void endRebuild(unsigned int count);

    private:
        unsigned int mCount;
        Dorvan::CowMemPtr<void> mIndexList;
    };

    // The cloud's element: its points, drawn against the cloud's vertex set.
    class VELUN_EXPORT ParticleIndexElement : public ElementData, public IndexElement {
    public:
        ParticleIndexElement();
        ~ParticleIndexElement() override;

        IndexDataSet& getIndexList() override;
        ParticleIndexData& getParticleIndexData() { return mIndexData; }

    private:
        ParticleIndexData mIndexData;
    };

    ParticleData();
    virtual ~ParticleData();

    ParticleData(const ParticleData&) = delete;
    ParticleData& operator=(const ParticleData&) = delete;

    // Starts over with an empty cloud: new vertex data (positions and one texture layer),
    // one group with the point element, an empty box. Earlier particles are gone.
    void initialize();
    bool isInitialized() const { return !mVertexData.isNull(); }

    // The cloud as geometry; it stays valid for its holders after the data is gone.
    Dorvan::SharedPtr<Geometry> getGeometryData() const;

    // Adds a living particle at rest in a free slot (or a new one) and makes it current;
    // returns the slot, or -1 before initialize.
    int addParticle(Dorvan::TVector<float, 3> const& position, std::int64_t deathTime);
    // Ends the current particle and frees its slot; nothing without a living current one.
    void deleteParticle();
    // Slot `i` becomes current (false when not below the slot count); a negative `i`
    // leaves no current particle and restarts nextParticle.
    bool setParticle(int i);
    // Moves on to the next living slot; at the end none is current and it returns false.
    bool nextParticle();
    int getCurrentNum() const { return mCurrentIndex; }

    // On the current particle; setters without one do nothing, getters give zero values.
    void setPosition(Dorvan::TVector<float, 3> const& position);
    Dorvan::TVector<float, 3> getPosition() const;
    void setVelocity(Dorvan::TVector<float, 3> const& velocity);
    Dorvan::TVector<float, 3> getVelocity() const;
    void setSize(float size);
    void setMaxTime(std::int64_t deathTime);
    std::int64_t getMaxTime() const;
    bool isActive() const;
    Particle getParticle() const;
    // Particles have no colour of their own (the material colours them): no effect.
    void setColor(Color const& color);
    Color getColor() const { return Color(0, 0, 0, 1); }

    // Slots in use; the argument has no effect.
    unsigned int getParticleCount(bool) const;
    // Slots ever used, living or dead.
    unsigned int getSlotCount() const { return static_cast<unsigned int>(mActive.size()); }

    // After a change: one pass over the slots rebuilds the index list and the box, and
    // stamps vertex and index data so buffers are uploaded again. Returns the living count.
    unsigned int updateData(std::int64_t);
    // Ends every particle; the list and box become empty, the arrays keep their size.
    void clear();

    // Ages the cloud and visits what lives: each active particle whose death time is not
    // 0 and lies before `now` dies and frees its slot; each other one becomes current and
    // step(slot) runs for it. Ends with no current particle.
    template <class Step>
    void advance(std::int64_t now, Step&& step) {
        const unsigned int slots = getSlotCount();
        for (unsigned int i = 0; i < slots; ++i) {
            if (!mActive[i])
                continue;
            const std::int64_t death = mDeathTime[i];
            if (death > 0 && death < now) {
                mActive[i] = 0;
                mFreeSlots.push(i);
                continue;
            }
            mCurrentIndex = static_cast<int>(i);
            step(i);
        }
        mCurrentIndex = -1;
    }
    // Three floats per slot: positions (the vertex array) and velocities in units per
    // second. Valid until the next addParticle or initialize; null before initialize.
    float* getPositionArray();
    float* getVelocityArray() { return mVelocities.empty() ? nullptr : mVelocities.data(); }

private:
    bool hasCurrent() const { return mCurrentIndex >= 0 && mCurrentIndex < static_cast<int>(getSlotCount()); }
    unsigned int takeSlot();
    void setBox(unsigned int count, float const* lo, float const* hi);

    Dorvan::SharedPtr<GeometryData> mGeometry;
    Dorvan::SharedPtr<VertexData> mVertexData;
    ParticleIndexElement* mIndexElement;
    // One entry per slot (three for vectors): separate arrays, so that each pass reads
    // only what it needs.
    std::vector<unsigned char> mActive;
    std::vector<float> mVelocities;
    std::vector<std::int64_t> mDeathTime;
    std::vector<float> mSizes;
    Dorvan::Stack<unsigned int> mFreeSlots;
    int mCurrentIndex;
};

}  // namespace Velun
