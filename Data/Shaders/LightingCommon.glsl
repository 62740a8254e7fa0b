// The lighting shared by "LightCompute" and "baseLightPixel", so that both paths give the same
// picture. Until lights exist it is the global ambient only: a pixel nothing was drawn on shows
// the global ambient; a drawn pixel shows its diffuse colour times (global ambient + its own
// ambient), plus its diffuse colour times its emissive.
vec4 LightPixel(float depth, vec4 diffuse, vec4 material, vec4 globalAmbient)
{
    if (depth >= 1.0)
        return vec4(globalAmbient.rgb, 1.0);
    vec3 lit = diffuse.rgb * (globalAmbient.rgb + material.x) + diffuse.rgb * material.y;
    return vec4(clamp(lit, 0.0, 1.0), 1.0);
}
