#include "physics/CubeTree/CubeTreeChecks.h"

#include <atomic>

#include "engine/Log.h"

namespace
{
// Reports a broken condition of the tree as an error naming the file CubeTree, once per site.
void ReportBroken(std::atomic<bool>& site, const char* condition, const char* function)
{
    if (site.load())
        Engine::ReportAtSite(site, condition, true, function, "CubeTree", 0);
}

std::atomic<bool>& IndexSite()
{
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    return *site;
}

std::atomic<bool>& StackSite()
{
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    return *site;
}
}

namespace CubeTreeChecks
{
[[gnu::noinline, gnu::cold]] CubeTreeNode& BadIndex()
{
    ReportBroken(IndexSite(), "index >= 0", "CubeTree::At");
    static CubeTreeNode scratch;
    scratch = CubeTreeNode{};
    return scratch;
}

[[gnu::noinline, gnu::cold]] void StackFull()
{
    ReportBroken(StackSite(), "sp < stack_size", "CubeTree::QueryPairs");
}
}
