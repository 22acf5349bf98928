#include "descriptors/descriptor_composite.h"

#include <memory>

#include "descriptors/scalar_descriptors.h"
#include "tests/descriptors/record_test.h"

namespace {

using DescriptorCompositeTest = RecordTest;

// A Mortal notes its own end.
class Mortal : public AbstractDescriptor {
public:
    Mortal(std::string& ends, char letter) : ends(ends), letter(letter) {}
    ~Mortal() override { ends += letter; }

private:
    std::string& ends;
    char letter;
};

AbstractDescriptor* Session(unsigned long handle) { return new SessionHandleDescriptor(handle); }

TEST_F(DescriptorCompositeTest, NoChildren_CompositePrintsItsBraces) {
    EXPECT_EQ(Old<DescriptorComposite>(), "\nUnknown\n{\n}");
    EXPECT_EQ(New<DescriptorComposite>(), "Unknown{}");
    const DescriptorComposite composite;
    UseOldFormat();
    EXPECT_EQ(Printed(composite, 3, ";"), "\n   Unknown\n   {\n   };");
    UseNewFormat();
    EXPECT_EQ(Printed(composite, 3, " "), "Unknown{} ");
}

TEST_F(DescriptorCompositeTest, OldFormat_SemicolonFollowsEachChild) {
    DescriptorComposite composite;
    UseOldFormat();
    composite.AddDescriptor(Session(0xA1));
    composite.AddDescriptor(Session(0xB2));
    EXPECT_EQ(Printed(composite),
              "\nUnknown"
              "\n{"
              "\n   SessionHandle(0xa1);"
              "\n   SessionHandle(0xb2);"
              "\n}");
}

TEST_F(DescriptorCompositeTest, NewFormat_BlankFollowsEachChild) {
    UseNewFormat();
    DescriptorComposite composite;
    composite.AddDescriptor(Session(161));
    composite.AddDescriptor(Session(178));
    EXPECT_EQ(Printed(composite), "Unknown{Sesn=161 Sesn=178 }");
}

TEST_F(DescriptorCompositeTest, CompositeHoldsComposites_AllArePrinted) {
    for (const bool isNew : {false, true}) {
        bUseNewLogFormat.store(isNew);
        auto* inner = new DescriptorComposite;
        inner->AddDescriptor(Session(7));
        inner->AddDescriptor(new DescriptorComposite);
        DescriptorComposite outer;
        outer.AddDescriptor(inner);
        outer.AddDescriptor(Session(8));
        EXPECT_EQ(Printed(outer), isNew ? "Unknown{Unknown{Sesn=7 Unknown{} } Sesn=8 }"
                                        : "\nUnknown"
                                          "\n{"
                                          "\n   Unknown"
                                          "\n   {"
                                          "\n      SessionHandle(0x7);"
                                          "\n      Unknown"
                                          "\n      {"
                                          "\n      };"
                                          "\n   };"
                                          "\n   SessionHandle(0x8);"
                                          "\n}");
    }
}

TEST_F(DescriptorCompositeTest, ManyChildren_StayInTheOrderOfAdding) {
    UseNewFormat();
    DescriptorComposite composite;
    std::string expected = "Unknown{";
    for (unsigned count = 0; count < 40; ++count) {
        EXPECT_EQ(composite.ChildCount(), count);
        AbstractDescriptor* const child = Session(count);
        composite.AddDescriptor(child);
        EXPECT_EQ(composite.ChildAtIndex(count), child);
        expected += "Sesn=" + std::to_string(count) + " ";
        EXPECT_EQ(Printed(composite), expected + "}");
    }
}

TEST_F(DescriptorCompositeTest, ChildIsNull_CompositeIgnoresIt) {
    DescriptorComposite composite;
    composite.AddDescriptor(nullptr);
    EXPECT_EQ(composite.ChildCount(), 0U);
    composite.AddDescriptor(Session(1));
    composite.AddDescriptor(nullptr);
    EXPECT_EQ(composite.ChildCount(), 1U);
}

TEST_F(DescriptorCompositeTest, CompositeEnds_ChildrenEndInReverseOrder) {
    std::string ends;
    {
        DescriptorComposite composite;
        composite.AddDescriptor(new Mortal(ends, 'a'));
        composite.AddDescriptor(new Mortal(ends, 'b'));
        auto* inner = new DescriptorComposite;
        inner->AddDescriptor(new Mortal(ends, 'c'));
        inner->AddDescriptor(new Mortal(ends, 'd'));
        composite.AddDescriptor(inner);
        composite.AddDescriptor(new Mortal(ends, 'e'));
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 7U);
        EXPECT_EQ(ends, "");
    }
    EXPECT_EQ(ends, "edcba");
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
}

TEST_F(DescriptorCompositeTest, ResetOfTheChildren_ForgetsThemWithoutDeletingThem) {
    std::string ends;
    DescriptorComposite composite;
    const auto first = std::make_unique<Mortal>(ends, 'a');
    composite.AddDescriptor(first.get());
    composite.ResetChildrenBuffer();
    EXPECT_EQ(composite.ChildCount(), 0U);
    EXPECT_EQ(ends, "");
    composite.AddDescriptor(new Mortal(ends, 'b'));
    EXPECT_EQ(composite.ChildCount(), 1U);
}

TEST_F(DescriptorCompositeTest, CompositeForAStream_IsFlushedAtTheEndOfItsContent) {
    UseNewFormat();
    DescriptorComposite composite;
    composite.AddDescriptor(Session(5));
    composite.AddDescriptor(new DescriptorComposite);
    EXPECT_EQ(FlushedPieces(composite),
              (std::vector<std::string>{"Unknown{Sesn=5", " Unknown{} ", "}", "(end)"}));
}

}  // namespace
