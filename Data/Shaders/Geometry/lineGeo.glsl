__ShaderDesc
{
    Type Geometry
    EntryPoint main
}

// Widens each line into a screen-facing quad of its width in pixels.

layout(lines) in;
layout(triangle_strip, max_vertices = 4) out;

in gl_PerVertex { vec4 gl_Position; } gl_in[];
out gl_PerVertex { vec4 gl_Position; };

layout(location = 0) in vec4 v_Colour[];
layout(location = 1) in float v_Width[];

layout(location = 0) out vec4 g_Colour;

layout(std140, binding = 4) uniform Screen
{
    uvec2 ui2_ScreenSize;
};

void main()
{
    vec4 a = gl_in[0].gl_Position;
    vec4 b = gl_in[1].gl_Position;
    vec2 size = max(vec2(ui2_ScreenSize), vec2(1.0));
    vec2 direction = normalize((b.xy / max(b.w, 1e-5) - a.xy / max(a.w, 1e-5)) * size + vec2(1e-6, 0.0));
    vec2 side = vec2(-direction.y, direction.x) / size;
    vec4 offsetA = vec4(side * v_Width[0] * a.w, 0.0, 0.0);
    vec4 offsetB = vec4(side * v_Width[1] * b.w, 0.0, 0.0);
    g_Colour = v_Colour[0];
    gl_Position = a + offsetA;
    EmitVertex();
    gl_Position = a - offsetA;
    EmitVertex();
    g_Colour = v_Colour[1];
    gl_Position = b + offsetB;
    EmitVertex();
    gl_Position = b - offsetB;
    EmitVertex();
    EndPrimitive();
}
