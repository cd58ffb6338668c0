#include "Scene.h"

#include <iostream>

using Dorvan::SharedPtr;
using namespace Velun;

namespace Showcase {

TransformationNode& place(Nodes& nodes, Branch& parent, float x, float y, float z) {
    TransformationNode& node = nodes.keep(new TransformationNode());
    node.translate(x, y, z, false);
    parent.attachChild(node);
    return node;
}

TransformationNode& place(Nodes& nodes, TransformationNode& parent, float x, float y, float z) {
    TransformationNode& node = nodes.keep(new TransformationNode());
    node.translate(x, y, z, false);
    parent.setChild(node);
    return node;
}

GeometryObject& shape(Nodes& nodes, TransformationNode& parent, SharedPtr<Geometry> geometry,
                      SharedPtr<Material> material) {
    GeometryObject& object = nodes.keep(new GeometryObject());
    GeometrySubobject* part = new GeometrySubobject();
    part->setGeometry(geometry, 0);
    object.addSubobject(*part);
    object.setDefaultMaterial(0, material);
    parent.setChild(object);
    return object;
}

namespace {

ObjectNode* loadModel(Nodes& nodes, const std::string& name) {
    ObjectNode* object = VelunCore::getSingleton().getResourceManager().getObjectManager().createObject(name);
    if (!object)
        std::cerr << "the model " << name << " could not be loaded" << std::endl;
    return object ? &nodes.keep(object) : nullptr;
}

}  // namespace

ObjectNode* model(Nodes& nodes, TransformationNode& parent, const std::string& name) {
    ObjectNode* object = loadModel(nodes, name);
    if (object)
        parent.setChild(*object);
    return object;
}

ObjectNode* model(Nodes& nodes, Branch& parent, const std::string& name) {
    ObjectNode* object = loadModel(nodes, name);
    if (object)
        parent.attachChild(*object);
    return object;
}

Light& light(Nodes& nodes, TransformationNode& parent, Light::LightType type, Color diffuse) {
    Light& light = nodes.keep(new Light());
    light.setLightType(type);
    light.setDiffuseColor(diffuse);
    light.setSpecularColor(diffuse);
    light.setAmbientColor(Color(0.0f, 0.0f, 0.0f, 1.0f));
    parent.setChild(light);
    return light;
}

SharedPtr<Material> texturedMaterial(SharedPtr<Texture> texture) {
    SharedPtr<Material> material(new Material());
    material->setTexture(0, texture);
    material->setSpecularMaterialColor(Color(0.1f, 0.1f, 0.1f, 1.0f));
    return material;
}

SharedPtr<Material> unlitMaterial(Color color, bool blended) {
    SharedPtr<Material> material(new Material());
    material->setUseDefaultVertexColor(true);
    material->setDefaultVertexColor(color);
    material->setUseBlending(blended);
    material->setBlendMode(Material::AlphaBlend);
    // The alpha test would drop the faint fragments that blending is for.
    material->setUseAlphaTest(!blended);
    SharedPtr<RenderSettings> unlit(new RenderSettings());
    unlit->setUseLights(false);
    material->setRenderSettings(unlit);
    return material;
}

}  // namespace Showcase
