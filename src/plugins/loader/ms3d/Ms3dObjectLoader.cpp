#include "plugins/loader/ms3d/Ms3dObjectLoader.h"

#include <fstream>
#include <sstream>
#include <vector>

#include "core/NativePath.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/IndexedTriangles.h"
#include "geometry/VertexData.h"
#include "material/Material.h"
#include "plugins/loader/ms3d/Ms3dFile.h"
#include "plugins/loader/ms3d/Ms3dObjectFactory.h"
#include "scene/BoundingBox.h"
#include "texture/Texture2D.h"
#include "texture/TextureManager.h"

namespace Velun {

namespace {

void logError(std::string const& text) { VelunCore::getLogger("loader.ms3d.objectloader")->error(text); }

Dorvan::SharedPtr<Geometry> buildGeometry(Ms3dFile const& file, std::string const& name) {
    GeometryData* geometry = new GeometryData(name);
    Dorvan::SharedPtr<VertexData> vertices(new VertexData());
    BoundingBox* box = new BoundingBox();

    std::vector<Ms3dFile::Vertex> const& positions = file.getVertices();
    std::vector<Ms3dFile::Triangle> const& triangles = file.getTriangles();
    // Every corner gets a vertex of its own: the file's normals and texture coordinates
    // belong to corners, not to the shared positions.
    std::vector<unsigned int> corners(triangles.size() * 3);
    vertices->setUseTexCoordinates(true);
    vertices->setUseNormal(true);
    vertices->addTextureIndex(0);
    vertices->initialize(static_cast<int>(corners.size()), 12);
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        Ms3dFile::Triangle const& triangle = triangles[t];
        for (int c = 0; c < 3; ++c) {
            float const* p = positions[triangle.vertexIndices[c]].position;
            corners[t * 3 + c] = vertices->addVertex();
            vertices->setVertex(p[0], p[1], p[2]);
            vertices->setNormal(triangle.normals[c][0], triangle.normals[c][1], triangle.normals[c][2]);
            vertices->setTexCoordinate(triangle.s[c], triangle.t[c], 0);
            box->merge(Point(p[0], p[1], p[2]));
        }
    }
    geometry->setBoundingVolume(box);
    geometry->setIndexedVertexData(vertices);

    for (Ms3dFile::Group const& fileGroup : file.getGroups()) {
        GeometryDataGroup& group = geometry->createGroup();
        IndexedTriangles* element =
            new IndexedTriangles(static_cast<int>(fileGroup.triangleIndices.size() * 3));
        for (unsigned short t : fileGroup.triangleIndices)
            element->addTriangle(corners[t * 3], corners[t * 3 + 1], corners[t * 3 + 2]);
        group.addElement(*element);
        // -1 (no material) becomes 0xFFFFFFFF, which names no material.
        group.setMaterialIndex(static_cast<unsigned int>(fileGroup.materialIndex));
    }
    return Dorvan::SharedPtr<Geometry>(geometry);
}

Dorvan::Vector<Dorvan::SharedPtr<Material>> buildMaterials(Ms3dFile const& file) {
    Dorvan::Vector<Dorvan::SharedPtr<Material>> materials;
    ResourceManager* resources = VelunCore::getSingleton().findResourceManager();
    for (Ms3dFile::Material const& fileMaterial : file.getMaterials()) {
        Dorvan::SharedPtr<Material> material(new Material());
        material->setAmbientMaterialColor(Color(fileMaterial.ambient, 4));
        material->setDiffuseMaterialColor(Color(fileMaterial.diffuse, 4));
        material->setSpecularMaterialColor(Color(fileMaterial.specular, 4));
        // A texture that cannot be found leaves the material untextured; the texture
        // manager's loader has said why.
        if (resources && !fileMaterial.texture.empty()) {
            Dorvan::SharedPtr<TextureSource> source =
                resources->getTextureManager().getTextureSource(fileMaterial.texture);
            if (source) {
                Dorvan::SharedPtr<Texture2D> texture(new Texture2D(source));
                texture->setGenerateMipMaps(true);
                texture->setAllFilters(Texture::Trilinear);
                material->setTexture(0, texture);
            }
        }
        materials.add(material);
    }
    return materials;
}

}  // namespace

Ms3dObjectLoader::Ms3dObjectLoader() : mInitialized(false) {}

Ms3dObjectLoader::~Ms3dObjectLoader() {}

bool Ms3dObjectLoader::isInitialized() const { return mInitialized; }

bool Ms3dObjectLoader::initialize() {
    mInitialized = true;
    return true;
}

bool Ms3dObjectLoader::shutdown() {
    mInitialized = false;
    return true;
}

bool Ms3dObjectLoader::canLoad(NameMapper::ResourceInfo const& info) { return info.mFileType == "ms3d"; }

Dorvan::SharedPtr<ObjectFactory> Ms3dObjectLoader::load(NameMapper::ResourceInfo const& info) {
    std::ifstream in(toNativePath(info.mFileName), std::ios::binary);
    std::vector<char> data;
    if (in) {
        in.seekg(0, std::ios::end);
        std::streamoff size = in.tellg();
        in.seekg(0, std::ios::beg);
        if (size >= 0) {
            data.resize(static_cast<std::size_t>(size));
            in.read(data.data(), size);
        }
    }
    if (!in) {
        logError("Error loading ms3d file " + info.mFileName);
        return Dorvan::SharedPtr<ObjectFactory>();
    }
    in.close();
    return load(info, data.data(), data.size());
}

Dorvan::SharedPtr<ObjectFactory> Ms3dObjectLoader::load(NameMapper::ResourceInfo const& info,
                                                        void const* data, std::size_t size) {
    Ms3dFile file;
    switch (file.read(data, size)) {
    case Ms3dFile::Ok:
        break;
    case Ms3dFile::NotMs3d:
        logError("Error loading ms3d file: Not a valid Milkshape3D model file.");
        return Dorvan::SharedPtr<ObjectFactory>();
    case Ms3dFile::UnsupportedVersion:
        logError("Error loading ms3d file: Unhandled file version. Only Milkshape3D Version 1.3 and 1.4 is "
                 "supported.");
        return Dorvan::SharedPtr<ObjectFactory>();
    case Ms3dFile::Malformed:
        logError("Error loading ms3d file " + info.mFileName + ": " + file.getError());
        return Dorvan::SharedPtr<ObjectFactory>();
    }
    Dorvan::SharedPtr<Geometry> geometry = buildGeometry(file, info.mName);
    return Dorvan::SharedPtr<ObjectFactory>(
        new Ms3dObjectFactory(info.mName, geometry, buildMaterials(file)));
}

}  // namespace Velun
