// Hives that the examiner may not read, and what stands in their places.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/volume/VolumePlatform.h"
#include "tests/volume/TestVolume.h"

namespace ostrevin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class UnreadableHivesTest : public testing::Test {
  protected:
    TestVolume volume_;
};

TEST_F(UnreadableHivesTest, WhoCannotReadAProfileIsNoAdministrator) {
    volume_.Write();
    std::filesystem::remove(volume_.folder / "Documents and Settings/LocalService/NTUSER.DAT");
    EXPECT_EQ(volume_.Open()->GroupUsers().size(), 1U) << "what is not there needs no rights";
    volume_.folder.Shut("Documents and Settings/bob");
    volume_.folder.Shut("Documents and Settings/carol.CORP/NTUSER.DAT");
    const OrdinaryUser user;
    EXPECT_THAT(volume_.Open()->GroupUsers(), IsEmpty());
    EXPECT_THAT(volume_.notices, testing::UnorderedElementsAre(HasSubstr("bob\\NTUSER.DAT: "),
                                                               HasSubstr("/carol.CORP/NTUSER.DAT: ")));
}

TEST_F(UnreadableHivesTest, WhoCannotReadTheMachinesHivesIsNoAdministrator) {
    volume_.Write();
    volume_.folder.Shut("WINDOWS/system32/config/SECURITY");
    {
        const OrdinaryUser user;
        EXPECT_THAT(volume_.Open()->GroupUsers(), IsEmpty());
    }
    EXPECT_THAT(volume_.notices, ElementsAre(HasSubstr("/SECURITY: ")));
    volume_.notices.clear();
    std::filesystem::remove(volume_.folder / "WINDOWS/system32/config/SECURITY");
    EXPECT_EQ(volume_.Open()->GroupUsers().size(), 1U) << "what is not there needs no rights";
    EXPECT_THAT(volume_.notices, IsEmpty());
}

TEST_F(UnreadableHivesTest, AFifoOrFolderForAHiveHangsNothing) {
    volume_.Write();
    for (const char* name : {"anna", "carol.CORP"}) {
        std::filesystem::remove(volume_.folder /
                                ("Documents and Settings/" + std::string(name) + "/NTUSER.DAT"));
    }
    volume_.folder.MakeFifo("Documents and Settings/carol.CORP/NTUSER.DAT");
    volume_.folder.MakeFolder("Documents and Settings/anna/NTUSER.DAT");
    const auto platform = volume_.Open();
    EXPECT_EQ(platform->ShellProcessOwners().at(0).user, "anna");
    EXPECT_THAT(AccountNames(*platform, kDomainSid), ElementsAre("carol.CORP"));
    EXPECT_THAT(platform->GroupUsers(), IsEmpty());
    KeyHandle key = 0;
    EXPECT_EQ(platform->RegOpenKeyExA(kCurrentUser, "Software", 1, key), kFileNotFound);
    EXPECT_THAT(volume_.notices, testing::UnorderedElementsAre(HasSubstr("anna/NTUSER.DAT: "),
                                                               HasSubstr("carol.CORP/NTUSER.DAT: ")));
}

TEST_F(UnreadableHivesTest, AHiveWithoutRightsIsToldOf) {
    volume_.Write();
    volume_.folder.Shut("Documents and Settings/bob/NTUSER.DAT");
    volume_.folder.Shut("Documents and Settings/carol.CORP");
    const OrdinaryUser user;
    const auto platform = volume_.Open();
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kBobSid, "C:\\Documents and Settings\\bob\\NTUSER.DAT"),
              kAccessDenied);
    EXPECT_EQ(platform->RegLoadKeyA(kUsers, kDomainSid, "C:\\Documents and Settings\\carol.CORP\\NTUSER.DAT"),
              kAccessDenied);
    EXPECT_THAT(volume_.notices,
                testing::UnorderedElementsAre(HasSubstr("/bob/NTUSER.DAT: "), HasSubstr("carol.CORP")));
}

}  // namespace
}  // namespace ostrevin
