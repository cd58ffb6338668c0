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
    float s[3];
    float t[3];
};

struct Group {
    std::vector<std::uint16_t> triangles;
    std::int8_t material;
};

struct Material {
    float ambient[4];
    float diffuse[4];
    float specular[4];
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

class Writer {
public:
    std::vector<unsigned char> bytes;

    void u8(unsigned v) { bytes.push_back(static_cast<unsigned char>(v)); }
    void u16(unsigned v) {
        u8(v & 0xFF);
        u8((v >> 8) & 0xFF);
    }
    void u32(std::uint32_t v) {
        u16(v & 0xFFFF);
        u16(v >> 16);
    }
    void f32(float f) {
        std::uint32_t v;
        std::memcpy(&v, &f, 4);
        u32(v);
    }
    // A fixed-size, zero-padded field; a string of exactly `size` characters has no zero.
    void chars(const std::string& s, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            u8(i < s.size() ? static_cast<unsigned char>(s[i]) : 0);
    }
};

inline std::vector<unsigned char> write(const Model& model, Layout* layout = nullptr) {
    Writer w;
    w.chars("MS3D000000", 10);
    w.u32(static_cast<std::uint32_t>(model.version));
    Layout at;
    at.vertices = w.bytes.size();
    w.u16(static_cast<unsigned>(model.vertices.size()));
    for (const Vertex& v : model.vertices) {
        w.u8(0);
        w.f32(v.x);
        w.f32(v.y);
        w.f32(v.z);
        w.u8(0xFF);
        w.u8(1);
    }
    at.triangles = w.bytes.size();
    w.u16(static_cast<unsigned>(model.triangles.size()));
    for (const Triangle& t : model.triangles) {
        w.u16(0);
        for (int i = 0; i < 3; ++i)
            w.u16(t.v[i]);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                w.f32(t.n[i][j]);
        for (int i = 0; i < 3; ++i)
            w.f32(t.s[i]);
        for (int i = 0; i < 3; ++i)
            w.f32(t.t[i]);
        w.u8(1);
        w.u8(0);
    }
    at.groups = w.bytes.size();
    w.u16(static_cast<unsigned>(model.groups.size()));
    for (std::size_t g = 0; g < model.groups.size(); ++g) {
        w.u8(0);
        w.chars("group" + std::to_string(g), 32);
        w.u16(static_cast<unsigned>(model.groups[g].triangles.size()));
        for (std::uint16_t t : model.groups[g].triangles)
            w.u16(t);
        w.u8(static_cast<std::uint8_t>(model.groups[g].material));
    }
    at.materials = w.bytes.size();
    w.u16(static_cast<unsigned>(model.materials.size()));
    for (std::size_t m = 0; m < model.materials.size(); ++m) {
        const Material& mat = model.materials[m];
        w.chars("material" + std::to_string(m), 32);
        for (float c : mat.ambient)
            w.f32(c);
        for (float c : mat.diffuse)
            w.f32(c);
        for (float c : mat.specular)
            w.f32(c);
        for (int i = 0; i < 4; ++i)
            w.f32(0.0f);
        w.f32(10.0f);
        w.f32(1.0f);
        w.u8(0);
        w.chars(mat.texture, 128);
        w.chars("", 128);
    }
    at.end = w.bytes.size();
    w.f32(24.0f);  // animation fps, current time, total frames, joints
    w.f32(0.0f);
    w.u32(30);
    w.u16(0);
    if (layout)
        *layout = at;
    return w.bytes;
}

inline Triangle triangle(std::uint16_t a, std::uint16_t b, std::uint16_t c) {
    Triangle t = {{a, b, c}, {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}, {0, 1, 0}, {0, 0, 1}};
    return t;
}

inline Material material(float r, float g, float b, const std::string& texture) {
    Material m = {{r * 0.2f, g * 0.2f, b * 0.2f, 1}, {r, g, b, 1}, {0.5f, 0.5f, 0.5f, 1}, texture};
    return m;
}

inline void save(const std::string& path, const std::vector<unsigned char>& bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace ms3dtest
