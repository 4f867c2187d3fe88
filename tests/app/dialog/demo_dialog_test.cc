#include "../AppTest.h"
#include "Picture.h"

using namespace nktest;

TEST(DemoDialog, WritesThePictureOfAllFieldsWithTheAmountThatIsEntered) {
    const TemporaryFolder folder;
    const std::string path = folder.file("bild.png");
    const Outcome outcome = call({"demo", folder.file("demo.db"), "--picture", path});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const QImage picture(QString::fromStdString(path), "PNG");
    EXPECT_GT(picture.width(), 600);
    EXPECT_GT(picture.height(), 600) << "eleven fields, in two pixels for one";
    EXPECT_GT(qttest::darkPixels(picture), 5000);

    // The amount's field is the widest: another amount is another picture.
    const std::string plain = folder.file("plain.png");
    EXPECT_EQ(call({"demo", folder.file("plain.db"), "--format", "plain", "--picture", plain}).status, 0);
    EXPECT_NE(contentOf(plain), contentOf(path));
}

TEST(DemoDialog, TellsThatAPictureCannotBeWritten) {
    const TemporaryFolder folder;
    const Outcome outcome = call({"demo", folder.file("b.db"), "--picture", folder.file("fehlt/bild.png")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("fehlt/bild.png"));
}
