// Graphics::BaseGraphicsComponent: the base of every component the renderer
// draws. It carries how to draw (topology, indexed or not, element count),
// whether to draw at all (m_Render: an object not rendered stays in its
// space's quad tree but is skipped), the owner's Transform and the shaders.
// The pipeline asks each one, through the virtual operations below, for its
// batching key (GetModelId: components with the same model and shader are
// drawn as instances of one draw, except under key 0, drawn one by one),
// to bind its geometry, to write its instance rows and to answer picking.
//
// Initialize finds the owner's Transform and adds the component to its
// space's Graphics::GraphicsSpace; Uninitialize removes it.
#pragma once

#include "Graphics_Engine/Components/ShaderComponent.h"
#include "engine/Component.h"
#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

class Transform;

namespace Graphics
{
class GraphicsDevice;
class InstanceBuffer;
class ShaderProgram;

// D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST.
inline constexpr unsigned kTopologyTriangleList = 4;

class BaseGraphicsComponent : public Component
{
public:
    void Initialize() override;
    void Uninitialize() override;
    Meta::Data* GetMeta() const override;

    // The registry record of the concrete type.
    virtual const Meta::Data* GetDefinition() const { return GetMeta(); }
    // The batching key's model part; 0 draws every instance by itself.
    virtual unsigned GetModelId() const { return 0; }
    // Sets the topology and binds the vertex and index buffers.
    virtual void Bind(GraphicsDevice& device);
    // A hit at the distance from the ray's origin to the position; true when hit.
    virtual bool Pick(float& distance, bool dummy, const Math::Point3D& origin, const Math::Vector3D& direction);
    // Writes the instance rows of this component for the world matrix.
    virtual void WriteInstance(const Math::Matrix4& world, ShaderProgram* shader, InstanceBuffer& buffer);

    // D3D11_PRIMITIVE_TOPOLOGY number; triangle lists for meshes.
    unsigned m_Topology = kTopologyTriangleList;
    // 0 draws indexed, 1 draws vertices only.
    unsigned m_DrawMode = 0;
    // Indices (or vertices) handed to the draw call.
    unsigned m_ElementCount = 0;
    // Off: kept in the tree, skipped when drawing.
    bool m_Render = true;
    // Reserved.
    bool m_Reserved = false;
    // The owner's Transform, found at Initialize.
    Transform* m_Transform = nullptr;
    // The shaders that draw it.
    ShaderComponent m_ShaderComponent;
};
}
