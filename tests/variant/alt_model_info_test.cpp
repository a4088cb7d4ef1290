// One node of an alternate model forest: its fields, its owning and ordered
// children, the deep copy that the tree expansion is made of, and its
// printed form; the byte order of VARGON_ltstr.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/test_support.h"
#include "variant/basib_vargon.h"
#include "variant/vargon_probe.h"

namespace {

using vt::childKeys;
using vt::node;

// Long level and key texts, so that each node's strings live on the heap too.
std::string const kLongLevel = "RESERVED-LEVEL-WITH-A-LONG-NAME";

TEST(AltModelNode, ConstructorHoldsItsFieldsAndNoChildren)
{
    BASIB_ALT_MODEL_INFO owner("DRIVE", "080", nullptr);
    BASIB_ALT_MODEL_INFO made("PULL", "u", &owner);
    EXPECT_STREQ(made.GetLevel(), "PULL");
    EXPECT_STREQ(made.GetKeyValue(), "u");
    EXPECT_EQ(made.GetOwner(), &owner);
    EXPECT_EQ(made.GetNumChildren(), 0);
    EXPECT_EQ(made.GetFirstChild(), nullptr);
    EXPECT_TRUE(made.GetChildren().empty());
    EXPECT_EQ(owner.GetNumChildren(), 0) << "naming an owner does not make the node its child";
}

TEST(AltModelNode, SettersStoreTheirField)
{
    BASIB_ALT_MODEL_INFO owner("IO_TYPE", "lvc330", nullptr);
    BASIB_ALT_MODEL_INFO made("DRIVE", "xxx", nullptr);
    made.setLevelName("SLEW");
    made.setKeyValue("f");
    made.setOwner(&owner);
    EXPECT_STREQ(made.GetLevel(), "SLEW");
    EXPECT_STREQ(made.GetKeyValue(), "f");
    EXPECT_EQ(made.GetOwner(), &owner);
    made.setOwner(nullptr);
    EXPECT_EQ(made.GetOwner(), nullptr);
}

TEST(AltModelNode, AddChildPutsAtTheEndOrTheFrontAndTakesOwnership)
{
    BASIB_ALT_MODEL_INFO* other = new BASIB_ALT_MODEL_INFO("DRIVE", "999", nullptr);
    BASIB_ALT_MODEL_INFO* parent = new BASIB_ALT_MODEL_INFO("DRIVE", "080", nullptr);
    BASIB_ALT_MODEL_INFO* a = new BASIB_ALT_MODEL_INFO("PULL", "a", other);
    BASIB_ALT_MODEL_INFO* b = new BASIB_ALT_MODEL_INFO("PULL", "b", nullptr);
    BASIB_ALT_MODEL_INFO* c = new BASIB_ALT_MODEL_INFO("PULL", "c", nullptr);
    BASIB_ALT_MODEL_INFO* d = new BASIB_ALT_MODEL_INFO("PULL", "d", nullptr);

    parent->addChild(a, true);
    EXPECT_EQ(childKeys(parent), (std::vector<std::string>{"a"})) << "at the front of no children";
    parent->addChild(b, false);
    EXPECT_EQ(childKeys(parent), (std::vector<std::string>{"a", "b"}))
        << "the first child, added at the front, stays first";
    parent->addChild(c, true);
    parent->addChild(d, false);
    EXPECT_EQ(childKeys(parent), (std::vector<std::string>{"c", "a", "b", "d"}));
    for (BASIB_ALT_MODEL_INFO* child : {a, b, c, d})
        EXPECT_EQ(child->GetOwner(), parent) << child->GetKeyValue();
    EXPECT_EQ(parent->GetFirstChild(), c);
    EXPECT_EQ(parent->GetNumChildren(), 4);
    EXPECT_EQ(other->GetNumChildren(), 0);
    delete parent;
    delete other;
}

TEST(AltModelNode, AddChildAtTheFrontOfAnEmptyNodeIsAddingAtTheEnd)
{
    BASIB_ALT_MODEL_INFO front("PULL", "u", nullptr);
    BASIB_ALT_MODEL_INFO back("PULL", "u", nullptr);
    front.addChild(new BASIB_ALT_MODEL_INFO("IMP", "a", nullptr), true);
    back.addChild(new BASIB_ALT_MODEL_INFO("IMP", "a", nullptr), false);
    EXPECT_EQ(childKeys(&front), childKeys(&back));
    EXPECT_EQ(front.GetFirstChild()->GetOwner(), &front);
}

TEST(AltModelNode, FindChildGivesTheFirstExactMatchInChildOrder)
{
    BASIB_ALT_MODEL_INFO parent("DIFFCUR", "a", nullptr);
    EXPECT_EQ(parent.FindChild("io"), nullptr) << "no children";
    BASIB_ALT_MODEL_INFO* i = node("RESERVED", "i", &parent);
    BASIB_ALT_MODEL_INFO* io1 = node("RESERVED", "io", &parent);
    BASIB_ALT_MODEL_INFO* io2 = node("RESERVED", "io", &parent);
    BASIB_ALT_MODEL_INFO* od = node("RESERVED", "od", &parent);
    EXPECT_EQ(parent.FindChild("io"), io1) << "values may repeat; the first one counts";
    EXPECT_NE(parent.FindChild("io"), io2);
    EXPECT_EQ(parent.FindChild("i"), i);
    EXPECT_EQ(parent.FindChild("od"), od);
    EXPECT_EQ(parent.FindChild("o"), nullptr) << "no prefix match";
    EXPECT_EQ(parent.FindChild("iox"), nullptr);
    EXPECT_EQ(parent.FindChild("IO"), nullptr) << "case counts";
    EXPECT_EQ(parent.FindChild(""), nullptr);
}

TEST(AltModelNode, RemoveChildrenEmptiesTheList)
{
    BASIB_ALT_MODEL_INFO parent("DRIVE", "080", nullptr);
    BASIB_ALT_MODEL_INFO child("PULL", "u", nullptr);
    parent._children.push_back(&child);
    parent.RemoveChildren();
    EXPECT_EQ(parent.GetNumChildren(), 0);
    EXPECT_EQ(parent.GetFirstChild(), nullptr);
    EXPECT_STREQ(child.GetKeyValue(), "u");
}

// A source tree: holder (IO_TYPE lvc330) <- top (DRIVE 080) with the
// children a (PULL u: IMP 5 and IMP h, the latter with TERMVCC t) and
// b (PULL d).
struct SourceTree {
    SourceTree()
    {
        holder = new BASIB_ALT_MODEL_INFO("IO_TYPE", "lvc330", nullptr);
        top = new BASIB_ALT_MODEL_INFO("DRIVE", "080", nullptr);
        holder->addChild(top, false);
        a = new BASIB_ALT_MODEL_INFO("PULL", "u", nullptr);
        b = new BASIB_ALT_MODEL_INFO("PULL", "d", nullptr);
        top->addChild(a, false);
        top->addChild(b, false);
        a1 = new BASIB_ALT_MODEL_INFO("IMP", "5", nullptr);
        a2 = new BASIB_ALT_MODEL_INFO("IMP", "h", nullptr);
        a->addChild(a1, false);
        a->addChild(a2, false);
        a2x = new BASIB_ALT_MODEL_INFO("TERMVCC", "t", nullptr);
        a2->addChild(a2x, false);
    }
    ~SourceTree() { delete holder; }
    SourceTree(SourceTree const&) = delete;
    SourceTree& operator=(SourceTree const&) = delete;

    BASIB_ALT_MODEL_INFO* holder;
    BASIB_ALT_MODEL_INFO* top;
    BASIB_ALT_MODEL_INFO* a;
    BASIB_ALT_MODEL_INFO* b;
    BASIB_ALT_MODEL_INFO* a1;
    BASIB_ALT_MODEL_INFO* a2;
    BASIB_ALT_MODEL_INFO* a2x;
};

TEST(AltModelNodeCopy, CopiesFieldsAndStartsWithTheSameOwner)
{
    SourceTree source;
    BASIB_ALT_MODEL_INFO copy(source.top);
    EXPECT_STREQ(copy.GetLevel(), "DRIVE");
    EXPECT_STREQ(copy.GetKeyValue(), "080");
    EXPECT_EQ(copy.GetOwner(), source.holder);
    EXPECT_EQ(source.holder->GetNumChildren(), 1) << "the copy is not added to that owner";

    BASIB_ALT_MODEL_INFO rootCopy(source.holder);
    EXPECT_EQ(rootCopy.GetOwner(), nullptr);
}

TEST(AltModelNodeCopy, ChildCopiesAreNewNodesOwnedByTheCopyNeverByTheSource)
{
    SourceTree source;
    BASIB_ALT_MODEL_INFO copy(source.top);
    ASSERT_EQ(childKeys(&copy), (std::vector<std::string>{"u", "d"})) << "child order is kept";
    BASIB_ALT_MODEL_INFO* a = copy.GetChildren()[0];
    BASIB_ALT_MODEL_INFO* b = copy.GetChildren()[1];
    EXPECT_NE(a, source.a);
    EXPECT_NE(b, source.b);
    EXPECT_EQ(a->GetOwner(), &copy);
    EXPECT_EQ(b->GetOwner(), &copy);
    EXPECT_EQ(b->GetNumChildren(), 0);

    ASSERT_EQ(childKeys(a), (std::vector<std::string>{"5", "h"}));
    for (BASIB_ALT_MODEL_INFO* child : a->GetChildren()) {
        EXPECT_EQ(child->GetOwner(), a) << "a grandchild copy is owned by the child copy";
        EXPECT_NE(child, source.a1);
        EXPECT_NE(child, source.a2);
        EXPECT_STREQ(child->GetLevel(), "IMP");
    }
    BASIB_ALT_MODEL_INFO* a2x = a->GetChildren()[1]->GetFirstChild();
    ASSERT_NE(a2x, nullptr);
    EXPECT_NE(a2x, source.a2x);
    EXPECT_EQ(a2x->GetOwner(), a->GetChildren()[1]);
    EXPECT_STREQ(a2x->GetLevel(), "TERMVCC");
    EXPECT_STREQ(a2x->GetKeyValue(), "t");
}

TEST(AltModelNodeCopy, TheSourceStaysAsItWas)
{
    SourceTree source;
    BASIB_ALT_MODEL_INFO copy(source.top);
    copy.setKeyValue("160");
    copy.GetChildren()[0]->setKeyValue("x");
    EXPECT_STREQ(source.top->GetKeyValue(), "080");
    EXPECT_EQ(childKeys(source.top), (std::vector<std::string>{"u", "d"}));
    EXPECT_EQ(source.a->GetOwner(), source.top);
    EXPECT_EQ(source.a1->GetOwner(), source.a);
    EXPECT_EQ(source.a2x->GetOwner(), source.a2);
}

TEST(AltModelNodePrint, FirstChildOnItsOwnersLineOthersIndented)
{
    BASIB_ALT_MODEL_INFO* root = new BASIB_ALT_MODEL_INFO("IO_TYPE", "lvc330", nullptr);
    BASIB_ALT_MODEL_INFO* d1 = node("DRIVE", "080", root);
    node("PULL", "u", d1);
    node("PULL", "d", d1);
    BASIB_ALT_MODEL_INFO* d2 = node("DRIVE", "160", root);
    node("PULL", "u", d2);

    EXPECT_EQ(ts::captureStdout([&] { root->printMe(0); }),
              "IO_TYPE:lvc330 DRIVE:080 PULL:u \n"
              "         PULL:d \n"
              "DRIVE:160 PULL:u ");
    EXPECT_EQ(ts::captureStdout([&] { root->printMe(16); }),
              "IO_TYPE:lvc330 DRIVE:080 PULL:u \n" + std::string(25, ' ') + "PULL:d \n" +
                  std::string(16, ' ') + "DRIVE:160 PULL:u ");
    delete root;
}

TEST(AltModelNodePrint, ALeafPrintsLevelAndKeyAndABlank)
{
    BASIB_ALT_MODEL_INFO leaf("SLEW", "s", nullptr);
    EXPECT_EQ(ts::captureStdout([&] { leaf.printMe(7); }), "SLEW:s ");
}

TEST(AltModelNodePrint, IndentZeroPutsNoBlanksBetweenTheRootsChildren)
{
    BASIB_ALT_MODEL_INFO* root = new BASIB_ALT_MODEL_INFO("DIFFCUR", "a", nullptr);
    node("RESERVED", "io", root);
    node("RESERVED", "od", root);
    node("RESERVED", "in", root);
    EXPECT_EQ(ts::captureStdout([&] { root->printMe(0); }),
              "DIFFCUR:a RESERVED:io \nRESERVED:od \nRESERVED:in ");
    delete root;
}

TEST(VargonLtstr, PlainByteOrderOfTheTexts)
{
    VARGON_ltstr less;
    EXPECT_TRUE(less("PCICLAMP", "PWRSAVE"));
    EXPECT_FALSE(less("PWRSAVE", "PCICLAMP"));
    EXPECT_TRUE(less("REFCIRCUIT", "VREF"));
    EXPECT_TRUE(less("VREF", "VREF1"));
    EXPECT_FALSE(less("VREF1", "VREF"));
    EXPECT_TRUE(less("Z", "a")) << "upper case before lower case";
    EXPECT_TRUE(less("z", "\xe9")) << "bytes above 127 come last";
    EXPECT_TRUE(less("", "A"));
    std::string one = "VREF";
    std::string two = "VREF";
    EXPECT_FALSE(less(one.c_str(), two.c_str())) << "texts, not pointers, are compared";
    EXPECT_FALSE(less(two.c_str(), one.c_str()));
}

} // namespace
