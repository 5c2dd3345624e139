// The system's words for its errors, as its C library gives them, are in the tables.
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <gmock/gmock.h>
#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/config/Localizer.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginhostui {
namespace {

TEST(SystemWords, OfFrequentErrorsAreSaidInGerman)
{
    zetcore::config::Localizer german;
    german.LoadTableFromText(
        zettesting::ReadAll(std::filesystem::path(ZET_PROJECT_FOLDER) / "zetaudiopluginhostui/lang/de.txt"),
        "de");
    const auto said = [&german](int number) {
        return zetaudiopluginhost::reasons::InLanguage(std::generic_category().message(number), german);
    };
    for (const int number :
         {EPERM,    ENOENT,    EIO,          ENXIO,       ENOEXEC,      EAGAIN, ENOMEM,
          EACCES,   EBUSY,     ENODEV,       ENOTDIR,     EISDIR,       EINVAL, ENFILE,
          EMFILE,   ETXTBSY,   EFBIG,        ENOSPC,      EROFS,        ELOOP,  ENAMETOOLONG,
          ENOTCONN, ETIMEDOUT, ECONNREFUSED, ENETUNREACH, EHOSTUNREACH, ESTALE, EDQUOT})
        EXPECT_NE(said(number), std::generic_category().message(number));
    EXPECT_EQ(said(EACCES), "keine Berechtigung");
    EXPECT_EQ(said(EL3HLT), std::generic_category().message(EL3HLT)) << "a rare one stays as it is";
}

} // namespace
} // namespace zetaudiopluginhostui
