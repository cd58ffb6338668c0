#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "scene/SceneFixture.h"
#include "terrain/Terrain.h"
#include "terrain/TerrainTile.h"
#include "texture/TextureData.h"

namespace TerrainTest {

using Dorvan::SharedPtr;

// A width x height image of `channels` components of type T (bytes, shorts or floats; row 0 first).
template <class T>
SharedPtr<Velun::TextureSource> makeImage(unsigned int width, unsigned int height, unsigned int channels,
                                          std::vector<T> const& values) {
    Velun::TextureInfo info(width, height, 1,
                            sizeof(T) == 1   ? Velun::DataType::UnsignedByte
                            : sizeof(T) == 2 ? Velun::DataType::UnsignedShort
                                             : Velun::DataType::Float,
                            channels == 3 ? Velun::Color::Rgb : Velun::Color::Luminance);
    info.setChannels(channels);
    Dorvan::CowMemPtr<void> data;
    if (!values.empty() && data.alloc(values.size() * sizeof(T)))
        std::memcpy(data.get(), values.data(), values.size() * sizeof(T));
    return SharedPtr<Velun::TextureSource>(new Velun::TextureData(info, data));
}

inline SharedPtr<Velun::TextureSource> grey(unsigned int size, std::vector<unsigned char> const& values) {
    return makeImage<unsigned char>(size, size, 1, values);
}

using SceneTest::EngineTest;
typedef Dorvan::TVector<float, 3> Vec3;

inline void expectNear(Vec3 const& actual, Vec3 const& expected, float tolerance = 1e-4f) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
}

}  // namespace TerrainTest
