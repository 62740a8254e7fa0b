// The text helpers of the documentation generator: escaping, page links, templates.
#include "utilities/DocumentationGen/HtmlText.h"

#include <gtest/gtest.h>

using namespace DocGen;

TEST(HtmlTextTest, MarkupCharactersAreWrittenAsEntities)
{
    EXPECT_EQ(EscapeHtml("a < b && \"c\" > d"), "a &lt; b &amp;&amp; &quot;c&quot; &gt; d");
}

TEST(HtmlTextTest, SpacesInPageNamesArePercentEncodedInLinks)
{
    EXPECT_EQ(PageFileName("Space Systems"), "Space Systems.html");
    EXPECT_EQ(PageLink("Space Systems"), "<a href=\"Space%20Systems.html\">Space Systems</a>");
}

TEST(HtmlTextTest, NamesAFileCannotHoldBecomeUnderscores)
{
    EXPECT_EQ(PageFileName("a/b\\c"), "a_b_c.html");
    EXPECT_EQ(PageFileName(""), "_.html");
}

TEST(HtmlTextTest, EveryOccurrenceOfAMarkerIsReplaced)
{
    EXPECT_EQ(FillTemplate("<title>NAME</title><h1>NAME</h1>", {{"NAME", "Transform"}}),
              "<title>Transform</title><h1>Transform</h1>");
}

TEST(HtmlTextTest, InsertedTextIsNotSearchedForLaterMarkers)
{
    EXPECT_EQ(FillTemplate("COMMENT|DERIVED", {{"COMMENT", "Not DERIVED here"}, {"DERIVED", "Parent"}}),
              "Not DERIVED here|Parent");
}

TEST(HtmlTextTest, TheEarlierMarkerWinsWhereTwoStartAtOnePlace)
{
    EXPECT_EQ(FillTemplate("GROUPNAME GROUP", {{"GROUPNAME", "Events"}, {"GROUP", "G"}}), "Events G");
}
