// Splitting one line of a shader file into the tokens of the description
// language: tokens are separated by blanks and tabs (a carriage return counts
// as a blank, for files saved with Windows line ends), and the comment marks
// "//", "/*" and "*/" are tokens of their own even inside a word, so that
// "x//y" is "x", "//", "y".
#pragma once

#include <string>
#include <vector>

namespace Graphics
{
// The tokens of one line, comment marks included.
std::vector<std::string> SplitShaderTokens(const std::string& line);

// Keeps the tokens outside comments: inside a comment only "*/" ends it; outside, "//" ends the
// line and "/*" opens a comment that may go on over later lines. `inComment` carries the state
// from line to line.
std::vector<std::string> KeepTokensOutsideComments(const std::vector<std::string>& tokens, bool& inComment);
}
