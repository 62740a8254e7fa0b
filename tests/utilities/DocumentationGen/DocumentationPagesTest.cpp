// The text of the reference's class pages, group pages and index.
#include "utilities/DocumentationGen/DocumentationPages.h"

#include "engine/Math/Vector3D.h"
#include "utilities/DocumentationGen/FallbackTemplates.h"
#include "utilities/Meta/Registration.h"

#include <gtest/gtest.h>

using namespace DocGen;

namespace
{
struct DocGenUncommented
{
    int m_Count = 0;
    void Poke() {}
};

struct DocGenSample
{
    float m_Speed = 1;
    Math::Vector3D Where() const { return {}; }
};
}

META_REGISTER(DocGenUncommented)
{
    MEMBER(m_Count, "");
    METHOD(Poke);
}

META_REGISTER(DocGenSample)
{
    DESCRIPTION("Moves <fast> & DERIVED stays as written.");
    MEMBER(m_Speed, "Metres a second.");
    HELP("Where it is.");
    METHOD(Where);
}

namespace
{
DocumentationGroup OtherGroup()
{
    return {"Other", {Meta::Get<DocGenSample>(), Meta::Get<DocGenUncommented>()}};
}

const PageNames kPages = {"DocGenSample", "DocGenUncommented", "Vector3D", "Transform", "Component", "Mesh",
                          "BaseGraphicsComponent"};
}

TEST(DocumentationPagesTest, AClassWithNoCommentProducesAnEmptyDd)
{
    const DocumentationGroup group = OtherGroup();
    const std::string page = GroupPage(kFallbackGroupTemplate, group, {group}, kPages);
    EXPECT_NE(page.find("<dt><b><a href=\"DocGenUncommented.html\">DocGenUncommented</a></b></dt>\n<dd></dd>\n"),
              std::string::npos)
        << page;
    EXPECT_NE(page.find("<dd>Moves &lt;fast&gt; &amp; DERIVED stays as written.</dd>"), std::string::npos);
    EXPECT_NE(page.find("<table id = \"contents\">\n<tr>\n<td><dl>\n"), std::string::npos);
}

TEST(DocumentationPagesTest, ClassPageFillsEveryMarkerOfTheTemplate)
{
    const std::string page = ClassPage(kFallbackClassTemplate, *Meta::Get<DocGenSample>(), OtherGroup(), kPages);
    for (const char* marker : {"COMPONENTNAME", "COMPONENTCOMMENT", "DEPENDENCIES", "LISTCOMPONENTS", "COMPONENTSTUFF"})
        EXPECT_EQ(page.find(marker), std::string::npos) << marker;
    EXPECT_NE(page.find("Group: <a href=\"Other.html\">Other</a>"), std::string::npos);
    EXPECT_NE(page.find("<h1>DocGenSample</h1>"), std::string::npos);
    EXPECT_NE(page.find("<li><a href=\"DocGenUncommented.html\">DocGenUncommented</a></li>"), std::string::npos);
    EXPECT_NE(page.find("href=\"../style.css\""), std::string::npos);
}

TEST(DocumentationPagesTest, ClassBodyListsEachKindUnderItsHeading)
{
    const std::string body = ClassBody(*Meta::Get<DocGenSample>(), kPages);
    const std::size_t constructors = body.find("<h3><u> Constructors </u></h3>\n<dl>\n");
    const std::size_t members = body.find("<h3><u> Members </u></h3>\n<dl>\n");
    const std::size_t properties = body.find("<h3><u> Properties </u></h3>\n<dl>\n");
    const std::size_t methods = body.find("<h3><u> Methods </u></h3>\n<dl>\n");
    ASSERT_NE(methods, std::string::npos) << body;
    EXPECT_LT(constructors, members);
    EXPECT_LT(members, properties);
    EXPECT_LT(properties, methods);
    EXPECT_NE(body.find("<dt>float <b>Speed</b></dt>\n  <dd>Metres a second. </dd>\n"), std::string::npos) << body;
    EXPECT_NE(body.find("<dt><a href=\"Vector3D.html\">Vector3D</a> <b>Where</b>()</dt>\n  <dd>Where it is. </dd>\n"),
              std::string::npos)
        << body;
}

TEST(DocumentationPagesTest, AMethodWithoutAResultShowsVoid)
{
    const std::string body = ClassBody(*Meta::Get<DocGenUncommented>(), kPages);
    EXPECT_NE(body.find("<dt>void <b>Poke</b>()</dt>\n  <dd> </dd>\n"), std::string::npos) << body;
}

TEST(DocumentationPagesTest, ConstructorsListTheirArgumentTypes)
{
    const std::string body = ClassBody(*Meta::FindData("Vector3D"), kPages);
    EXPECT_NE(body.find("<dt><b>Vector3D</b>(float, float, float)</dt>\n"), std::string::npos) << body;
}

TEST(DocumentationPagesTest, PropertiesOfSpaceTypeAreNotListed)
{
    const Meta::Data* object = Meta::FindData("GameObject");
    ASSERT_NE(object, nullptr);
    ASSERT_NE(object->m_Properties.Find("Space"), nullptr);
    EXPECT_EQ(ClassBody(*object, kPages).find("<b>Space</b>"), std::string::npos);
}

TEST(DocumentationPagesTest, ParentAndDependencyLinkToTheirPages)
{
    const DocumentationGroup components{"Components", {Meta::FindData("Mesh")}};
    const std::string page = ClassPage(kFallbackClassTemplate, *Meta::FindData("Mesh"), components, kPages);
    EXPECT_NE(page.find("<u>Dependency:</u> <a href=\"Transform.html\">Transform</a>"), std::string::npos) << page;
    EXPECT_NE(page.find("Parent Class: <a href=\"BaseGraphicsComponent.html\">BaseGraphicsComponent</a>"),
              std::string::npos)
        << page;
}

TEST(DocumentationPagesTest, IndexHasTheTitleAndLinksToEveryGroup)
{
    std::vector<DocumentationGroup> groups;
    for (const std::string& name : GroupNames())
        groups.push_back({name, {}});
    const std::string page = IndexPage(groups);
    EXPECT_NE(page.find("<title>Vorn Documentation</title>"), std::string::npos);
    EXPECT_NE(page.find("<ul>\n<li><a href=\"Files/Components.html\">Components</a></li>\n"), std::string::npos);
    EXPECT_NE(page.find("<li><a href=\"Files/Space%20Systems.html\">Space Systems</a></li>\n"), std::string::npos);
    EXPECT_NE(page.find("<li><a href=\"Files/Other.html\">Other</a></li>\n</ul>\n"), std::string::npos);
}

TEST(DocumentationPagesTest, AnEnumerationListsItsValues)
{
    const std::string body = ClassBody(*Meta::FindData("ScreenMode"), kPages);
    EXPECT_NE(body.find("<h3><u> Values </u></h3>\n<dl>\n<dt><b>Keep</b> = 0</dt>\n"), std::string::npos) << body;
    EXPECT_NE(body.find("<dt><b>Toggle</b> = 3</dt>\n"), std::string::npos) << body;
}
