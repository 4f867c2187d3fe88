#include <nkfw/Exception.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "framework/FrameworkTest.h"

namespace {

using frameworktest::caught;
using frameworktest::Caught;
using frameworktest::FailingMemory;
using frameworktest::throws;

std::string messageOf(const CException& rException) {
    char szText[512];
    rException.GetErrorMessage(szText, sizeof(szText));
    return szText;
}

class OwnException : public CException {
  public:
    explicit OwnException(int& rDestroyed) : m_rDestroyed(rDestroyed) {}
    ~OwnException() override { ++m_rDestroyed; }

  private:
    int& m_rDestroyed;
};

TEST(Exception, DeleteReleasesIt) {
    int nDestroyed = 0;
    CException* const pException = new OwnException(nDestroyed);
    pException->Delete();
    EXPECT_EQ(nDestroyed, 1);
}

TEST(Exception, TheExceptionOfExhaustedMemoryIsOneStaticObjectThatDeleteLeavesAlone) {
    const auto thrown = [] {
        try {
            CMemoryException::Throw();
        } catch (CMemoryException* pException) {
            return pException;
        }
    };
    CMemoryException* const pFirst = thrown();
    pFirst->Delete();
    pFirst->Delete();
    EXPECT_EQ(thrown(), pFirst);
    EXPECT_EQ(messageOf(*pFirst), "Nicht gen\xFCgend Speicher");
}

TEST(Exception, ThrowingForExhaustedMemoryNeedsNone) {
    const FailingMemory memory(0);
    EXPECT_TRUE(throws<CMemoryException>([] { CMemoryException::Throw(); }));
    EXPECT_FALSE(memory.refused());
}

TEST(Exception, WithoutMemoryForAnotherExceptionTheOneOfExhaustedMemoryIsThrown) {
    int nFailures = 0;
    for (int nGranted = 0;; ++nGranted) {
        bool fMemory = false;
        bool fRefused = false;
        {
            const FailingMemory memory(nGranted);
            fMemory = throws<CMemoryException>(
                [] { throw new CDBException(-1, "HY000", 1, "Tabelle nicht gefunden"); });
            fRefused = memory.refused();
        }
        EXPECT_EQ(fMemory, fRefused);
        if (!fRefused) break;
        ++nFailures;
    }
    EXPECT_EQ(nFailures, 4);  // the exception, its state, and its text with and without the place
}

struct MessageRow {
    std::shared_ptr<CException> exception;
    const char* message;
};

template <class E, class... Arguments>
std::shared_ptr<CException> made(Arguments... arguments) {
    return Caught(new E(arguments...));
}

TEST(Exception, MessagesAreGermanTextsInCodePage1252) {
    int nDestroyed = 0;
    const MessageRow table[] = {
        {made<OwnException>(std::ref(nDestroyed)), "Unbekannter Fehler"},
        {made<CUserException>(), "Vorgang abgebrochen"},
        {made<CInvalidArgException>(), "Ung\xFCltiges Argument"},
        {made<CDBException>(SHORT{-1}, "08001", 14, "Keine Verbindung"), "Keine Verbindung"},
        {made<CDBException>(SHORT{-1}, nullptr, 0, nullptr), ""},
        {made<CFileException>(), "Kein Fehler"},
        {made<CFileException>(CFileException::genericException), "Fehler beim Zugriff auf die Datei"},
        {made<CFileException>(CFileException::fileNotFound, ENOENT, "a.dat"), "Datei nicht gefunden: a.dat"},
        {made<CFileException>(CFileException::badPath), "Pfad nicht gefunden"},
        {made<CFileException>(CFileException::accessDenied), "Zugriff auf die Datei verweigert"},
        {made<CFileException>(CFileException::invalidFile),
         "Die Datei ist nicht ge\xF6"
         "ffnet"},
        {made<CFileException>(CFileException::badSeek), "Ung\xFCltige Position in der Datei"},
        {made<CFileException>(CFileException::hardIO), "Ein-/Ausgabefehler"},
        {made<CFileException>(CFileException::diskFull), "Der Datentr\xE4ger ist voll"},
        {made<CFileException>(CFileException::endOfFile), "Ende der Datei erreicht"},
        {made<CFileException>(4711), "Fehler beim Zugriff auf die Datei"},
        {made<CArchiveException>(), "Kein Fehler"},
        {made<CArchiveException>(CArchiveException::genericException),
         "Das Archiv ist besch\xE4"
         "digt oder nicht mehr benutzbar"},
        {made<CArchiveException>(CArchiveException::readOnly),
         "In ein Archiv, das geladen wird, kann nicht geschrieben werden"},
        {made<CArchiveException>(CArchiveException::endOfFile), "Unerwartetes Ende des Archivs"},
        {made<CArchiveException>(CArchiveException::writeOnly),
         "Aus einem Archiv, das geschrieben wird, kann nicht gelesen werden"},
        {made<CArchiveException>(CArchiveException::badIndex), "Ung\xFCltiger Objektverweis im Archiv"},
        {made<CArchiveException>(CArchiveException::badClass),
         "Unbekannte oder unerwartete Klasse im Archiv"},
        {made<CArchiveException>(CArchiveException::badSchema), "Unbekannte Version einer Klasse im Archiv"},
    };
    for (const MessageRow& row : table)
        EXPECT_EQ(messageOf(*row.exception), row.message);
}

TEST(Exception, AMessageIsCutAndTerminatedInEveryBuffer) {
    const CFileException exception(CFileException::fileNotFound, ENOENT, "werte.dat");
    const std::string whole = "Datei nicht gefunden: werte.dat";
    for (UINT nRoom = 1; nRoom <= whole.size() + 3; ++nRoom) {
        std::vector<char> buffer(whole.size() + 8, '#');
        exception.GetErrorMessage(buffer.data(), nRoom);
        const std::string expected = whole.substr(0, nRoom - 1);
        EXPECT_EQ(std::string(buffer.data()), expected);
        for (std::size_t i = expected.size() + 1; i < buffer.size(); ++i)
            EXPECT_EQ(buffer[i], '#') << "room " << nRoom << ", byte " << i;
    }
}

TEST(Exception, AMessageWritesNothingWithoutABuffer) {
    const CUserException exception;
    exception.GetErrorMessage(nullptr, 100);
    char szText[] = "##";
    exception.GetErrorMessage(szText, 0);
    EXPECT_STREQ(szText, "##");
}

TEST(Exception, AMessageNeedsNoMemory) {
    const CFileException exception(CFileException::diskFull, ENOSPC, "werte.dat");
    char szText[64];
    const FailingMemory memory(0);
    exception.GetErrorMessage(szText, sizeof(szText));
    EXPECT_FALSE(memory.refused());
    EXPECT_STREQ(szText, "Der Datentr\xE4ger ist voll: werte.dat");
}

struct OsRow {
    int lOsError;
    int cause;
};

TEST(FileException, TellsTheCauseOfAnOperatingSystemsError) {
    const OsRow table[] = {
        {0, CFileException::none},
        {ENOENT, CFileException::fileNotFound},
        {ENOTDIR, CFileException::badPath},
        {ENAMETOOLONG, CFileException::badPath},
        {ELOOP, CFileException::badPath},
        {EACCES, CFileException::accessDenied},
        {EPERM, CFileException::accessDenied},
        {EROFS, CFileException::accessDenied},
        {EISDIR, CFileException::accessDenied},
        {ETXTBSY, CFileException::accessDenied},
        {EBADF, CFileException::accessDenied},
        {ESPIPE, CFileException::badSeek},
        {EIO, CFileException::hardIO},
        {ENOSPC, CFileException::diskFull},
        {EFBIG, CFileException::diskFull},
        {EDQUOT, CFileException::diskFull},
        {EMFILE, CFileException::genericException},
    };
    for (const OsRow& row : table) {
        const Caught pException = caught([&] { CFileException::ThrowOsError(row.lOsError, "x.dat"); });
        const auto* const pFile = dynamic_cast<const CFileException*>(pException.get());
        ASSERT_NE(pFile, nullptr);
        EXPECT_EQ(pFile->m_cause, row.cause) << row.lOsError;
        EXPECT_EQ(pFile->m_lOsError, row.lOsError);
        EXPECT_EQ(pFile->m_strFileName, "x.dat");
    }
}

TEST(DBException, KeepsWhatTheDatabaseTold) {
    const CDBException exception(-1, "42P01", 7, "Tabelle fehlt");
    EXPECT_EQ(exception.m_nRetCode, -1);
    EXPECT_EQ(exception.m_strState, "42P01");
    EXPECT_EQ(exception.m_nNativeError, 7);
    EXPECT_EQ(exception.m_strError, "Tabelle fehlt");
}

struct ClassRow {
    const CRuntimeClass* pClass;
    const char* name;
};

TEST(Exception, EveryClassIsToldAtRunTime) {
    const ClassRow table[] = {
        {RUNTIME_CLASS(CException), "CException"},
        {RUNTIME_CLASS(CMemoryException), "CMemoryException"},
        {RUNTIME_CLASS(CUserException), "CUserException"},
        {RUNTIME_CLASS(CInvalidArgException), "CInvalidArgException"},
        {RUNTIME_CLASS(CFileException), "CFileException"},
        {RUNTIME_CLASS(CArchiveException), "CArchiveException"},
        {RUNTIME_CLASS(CDBException), "CDBException"},
    };
    for (const ClassRow& row : table) {
        EXPECT_STREQ(row.pClass->m_lpszClassName, row.name);
        EXPECT_TRUE(row.pClass->IsDerivedFrom(RUNTIME_CLASS(CException)));
        EXPECT_EQ(row.pClass->CreateObject(), nullptr);
    }
    EXPECT_EQ(CUserException().GetRuntimeClass(), RUNTIME_CLASS(CUserException));
    EXPECT_EQ(CInvalidArgException().GetRuntimeClass(), RUNTIME_CLASS(CInvalidArgException));
    EXPECT_EQ(CFileException().GetRuntimeClass(), RUNTIME_CLASS(CFileException));
    EXPECT_EQ(CArchiveException().GetRuntimeClass(), RUNTIME_CLASS(CArchiveException));
    EXPECT_EQ(CDBException(0, "", 0, "").GetRuntimeClass(), RUNTIME_CLASS(CDBException));
    int nDestroyed = 0;
    EXPECT_EQ(OwnException(nDestroyed).GetRuntimeClass(), RUNTIME_CLASS(CException));
}

}  // namespace
