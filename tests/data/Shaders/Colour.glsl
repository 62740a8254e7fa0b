// The colour the test pixel stage draws; a test rewrites this file to see the program relinked.
vec3 IncludedColour()
{
    return vec3(1.0, 0.0, 0.0);
}
