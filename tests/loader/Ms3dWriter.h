#pragma once

// Writes Milkshape3D binary files for tests and benchmarks: little-endian,
// packed, with the sections the loader reads followed by an empty animation part.

#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace ms3dtest {

struct Vertex {
    float x, y, z;
};

struct Triangle {
    std::uint16_t v[3];
    float n[3][3];
    float s[3], t[3];
};

struct Group {
    std::vector<std::uint16_t> triangles;
    std::int8_t material;
};

struct Material {
    float ambient[4], diffuse[4], specular[4];
    std::string texture;
};

struct Model {
    std::int32_t version = 4;
    std::vector<Vertex> vertices;
    std::vector<Triangle> triangles;
    std::vector<Group> groups;
    std::vector<Material> materials;
};

// Where each section of a written file starts (at its count), and where the materials end.
struct Layout {
    std::size_t vertices, triangles, groups, materials, end;
};

inline std::vector<unsigned char> write(const Model& model, Layout* layout = nullptr) {
    std::vector<unsigned char> b;
    auto u8 = [&b](unsigned v) { b.push_back(static_cast<unsigned char>(v)); };
    auto u16 = [&u8](std::size_t v) { u8(v & 0xFF), u8((v >> 8) & 0xFF); };
    auto u32 = [&u16](std::uint32_t v) { u16(v & 0xFFFF), u16(v >> 16); };
    auto f32 = [&u32](float f) {
        std::uint32_t v;
        std::memcpy(&v, &f, 4);
        u32(v);
    };
    // A fixed-size, zero-padded field; a string of exactly `size` characters has no zero.
    auto chars = [&u8](const std::string& s, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            u8(i < s.size() ? static_cast<unsigned char>(s[i]) : 0);
    };
    chars("MS3D000000", 10);
    u32(static_cast<std::uint32_t>(model.version));
    Layout at;
    at.vertices = b.size();
    u16(model.vertices.size());
    for (const Vertex& v : model.vertices)
        u8(0), f32(v.x), f32(v.y), f32(v.z), u8(0xFF), u8(1);
    at.triangles = b.size();
    u16(model.triangles.size());
    for (const Triangle& t : model.triangles) {
        u16(0);
        for (std::uint16_t v : t.v)
            u16(v);
        for (const float* f : {t.n[0], t.n[1], t.n[2], t.s, t.t})
            f32(f[0]), f32(f[1]), f32(f[2]);
        u8(1), u8(0);
    }
    at.groups = b.size();
    u16(model.groups.size());
    for (std::size_t g = 0; g < model.groups.size(); ++g) {
        u8(0), chars("group" + std::to_string(g), 32), u16(model.groups[g].triangles.size());
        for (std::uint16_t t : model.groups[g].triangles)
            u16(t);
        u8(static_cast<std::uint8_t>(model.groups[g].material));
    }
    at.materials = b.size();
    u16(model.materials.size());
    for (std::size_t m = 0; m < model.materials.size(); ++m) {
        const Material& mat = model.materials[m];
        chars("material" + std::to_string(m), 32);
        for (const float* colour : {mat.ambient, mat.diffuse, mat.specular})
            for (int i = 0; i < 4; ++i)
                f32(colour[i]);
        // Emissive, shininess, transparency, mode, texture, alpha map.
        f32(0), f32(0), f32(0), f32(0), f32(10), f32(1), u8(0), chars(mat.texture, 128), chars("", 128);
    }
    at.end = b.size();
    f32(24), f32(0), u32(30), u16(0);  // animation fps, current time, total frames, joints
    if (layout)
        *layout = at;
    return b;
}

inline Triangle triangle(std::uint16_t a, std::uint16_t b, std::uint16_t c) {
    return {{a, b, c}, {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}, {0, 1, 0}, {0, 0, 1}};
}

inline Material material(float r, float g, float b, const std::string& texture) {
    return {{r * 0.2f, g * 0.2f, b * 0.2f, 1}, {r, g, b, 1}, {0.5f, 0.5f, 0.5f, 1}, texture};
}

inline void save(const std::string& path, const std::vector<unsigned char>& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace ms3dtest
