// Goal: a voucher's files stay in its own folder and its settings survive a change of one key.
#include "apoyo/disco.h"
#include "platform/files/attachments.h"
#include "platform/files/settings_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

class Files : public ::testing::Test {
protected:
    const fs::path dir = fs::temp_directory_path() / ("quorvel_files_" + std::to_string(getpid()));
    void SetUp() override { fs::create_directories(dir); }
    void TearDown() override { fs::remove_all(dir); }
    static void write(const fs::path& path, const std::string& text) {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }
    static std::string read(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
};

TEST_F(Files, SettingsKeepEverythingButOneKey) {
    write(dir / "NIVO.INI", "; nota\r\n[otra]\r\nbase=no\r\n[Nivo]\r\n Base = \"C:\\datos; x\\\" \r\n"
                            "BASE=segunda\r\n\r\n[fin]\r\nultima=1");
    const SettingsFile s(dir);
    EXPECT_EQ(s.get("NIVO", "base"), "C:\\datos; x\\");
    EXPECT_EQ(s.get("fin", "Ultima"), "1");
    EXPECT_EQ(s.get("nivo", "nada"), "");
    ASSERT_TRUE(s.set("nivo", "BASE", "/srv/ñ\nx"));
    ASSERT_TRUE(s.set("nivo", "frmquorvel_grddetalle", "10#20#"));
    ASSERT_TRUE(s.set("nueva", "k", "v"));
    EXPECT_EQ(read(dir / "NIVO.INI"),
              "; nota\r\n[otra]\r\nbase=no\r\n[Nivo]\r\n Base =/srv/ñ x\r\nBASE=segunda\r\n"
              "frmquorvel_grddetalle=10#20#\n\r\n[fin]\r\nultima=1\n[nueva]\nk=v\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), {}), 1) << "no second file, no remains";
    for (const char* ends : {"  a ", "\"a\"", "\"", "a\t", ""}) {
        ASSERT_TRUE(s.set("nueva", "k", ends));
        EXPECT_EQ(s.get("nueva", "k"), std::string_view(ends) == "a\t" ? "a " : ends);
    }
    EXPECT_FALSE(SettingsFile(dir / "no_existe").set("nivo", "a", "b"));
    fs::create_directory(dir / "otra");
    ASSERT_TRUE(SettingsFile(dir / "otra").set("nivo", "a", "b"));
    EXPECT_EQ(read(dir / "otra" / "nivo.ini"), "[nivo]\na=b\n");
}

TEST_F(Files, SettingsAreReadAndWrittenInOneFile) {
    write(dir / "NIVO.ini", "[nivo]\na=grande\n");
    write(dir / "nivo.ini", "[nivo]\na=chica\n");
    EXPECT_TRUE(SettingsFile(dir).set("nivo", "a", "otra"));
    EXPECT_EQ(SettingsFile(dir).get("nivo", "a"), "otra");
    fs::remove(dir / "nivo.ini");
    EXPECT_EQ(SettingsFile(dir).get("nivo", "a"), "grande");
}

TEST_F(Files, SettingsThatCannotBeReadAreNotReplaced) {
    write(dir / "nivo.ini", "[nivo]\na=b\n");
    fs::permissions(dir, fs::perms::all);
    fs::permissions(dir / "nivo.ini", fs::perms::none);
    {
        const apoyo::Cualquiera sin_permiso;
        EXPECT_FALSE(SettingsFile(dir).set("nivo", "c", "d"));
    }
    EXPECT_EQ(read(dir / "nivo.ini"), "[nivo]\na=b\n");
}

TEST_F(Files, FoldersOfBaseAndDatabase) {
    struct Row {
        const char *name, *folder;
    };
    for (const Row& r : {Row{"/datos/empresa.db", "EMPRESA.DB"}, Row{"sqlite:/a/b/año.db?create=1", "AÑO.DB"},
                         Row{"C:\\suite\\conta.mdb", "CONTA"}, Row{"sqlite:x.db", "X.DB"},
                         Row{"postgresql://ana:se/creto@h1:5432,h2/conta?target=x/y", "CONTA"},
                         Row{"host=h password='x y' dbname=conta user=u", "CONTA"}, Row{"/a/..", "BASE"},
                         Row{"postgresql://h/..", "BASE"}, Row{"", "BASE"}})
        EXPECT_EQ(attachment_database(r.name), r.folder) << r.name;
    for (const Row& r : {Row{"", "/prog"}, Row{"/srv/x/", "/srv/x"}, Row{"/srv/x\\", "/srv/x"},
                         Row{"docs\\", "/prog/docs"}, Row{" /srv/x ", "/srv/x"}})
        EXPECT_EQ(attachment_base(r.name, "/prog"), fs::path(r.folder)) << r.name;
}

TEST_F(Files, AddFindRemoveStayInside) {
    const Attachments a(dir, "D");
    const std::string longest(251, 'n');
    write(dir / "src" / "f.pdf", "uno");
    write(dir / "src" / (longest + ".pdf"), "largo");
    write(dir / "adjunto" / "5" / "vieja.pdf", "vieja");
    write(dir / "adjunto" / "D" / "secreto", "no");
    EXPECT_EQ(a.add("5", dir / "src" / "f.pdf"), "f.pdf");
    EXPECT_EQ(a.add("5", dir / "src" / (longest + ".pdf")), longest + ".pdf");
    EXPECT_FALSE(a.add("5", dir / "src" / "falta"));
    EXPECT_FALSE(a.add("5", dir / "src"));
    EXPECT_EQ(read(dir / "adjunto/D/5/f.pdf"), "uno");
    EXPECT_FALSE(a.would_replace("5", dir / "src" / "f.pdf"));
    write(dir / "src" / "f.pdf", "dos");
    EXPECT_TRUE(a.would_replace("5", dir / "src" / "f.pdf"));
    EXPECT_EQ(a.find("5", "vieja.pdf"), dir / "adjunto/5/vieja.pdf");
    EXPECT_FALSE(a.remove("5", "vieja.pdf"));
    EXPECT_TRUE(fs::exists(dir / "adjunto/5/vieja.pdf"));
    for (const char* name : {"../secreto", "..", "", "/etc/passwd", "a/b", "..\\secreto"}) {
        EXPECT_FALSE(a.find("5", name)) << name;
        EXPECT_FALSE(a.remove("5", name)) << name;
    }
    for (const char* set : {"..", "", "5/..", "-1", "5a"}) EXPECT_FALSE(a.find(set, "secreto")) << set;
    EXPECT_TRUE(a.save_copy("5", "f.pdf", dir / "copia.pdf"));
    EXPECT_EQ(read(dir / "copia.pdf"), "uno");
    EXPECT_FALSE(a.save_copy("5", "f.pdf", dir / "no" / "hay" / "x"));
    EXPECT_TRUE(a.remove("5", "f.pdf"));
    EXPECT_FALSE(a.find("5", "f.pdf"));
}

TEST_F(Files, SetsAreCopiedAndClaimedWithoutTouchingOthers) {
    const Attachments a(dir, "D");
    write(dir / "adjunto/D/5/mia.pdf", "mia");
    write(dir / "adjunto/D/5/ajena.pdf", "ajena");
    write(dir / "adjunto/5/vieja.pdf", "vieja");
    write(dir / "adjunto/D/6/x", "x");
    EXPECT_EQ(a.first_free("5"), "7");
    EXPECT_FALSE(a.copy_set("5", "6", {"mia.pdf"}) || a.make("6")) << "another voucher's folder";
    ASSERT_TRUE(a.copy_set("5", "7", {"mia.pdf", "vieja.pdf", "falta.pdf"}));
    EXPECT_EQ(read(dir / "adjunto/D/7/vieja.pdf"), "vieja");
    EXPECT_EQ(a.claim("5"), "8");
    write(dir / "src" / "f.pdf", "uno");
    EXPECT_FALSE(a.add("8", dir / "src"));
    EXPECT_FALSE(fs::exists(dir / "adjunto/D/8")) << "an empty folder goes";
    ASSERT_TRUE(a.add("8", dir / "src" / "f.pdf"));
    EXPECT_EQ(a.claim("5"), "9");
    EXPECT_TRUE(a.remove("8", "f.pdf") && a.make("8")) << "with its last file a folder is free again";
    EXPECT_TRUE(a.remove("5", "mia.pdf") && fs::exists(dir / "adjunto/D/5/ajena.pdf"));
}

TEST_F(Files, OddNamesStayInsideOrAreRefused) {
    const Attachments a(dir, "D");
    const std::string longest = std::string(253, 'n') + "ñ"; // 255 bytes
    for (const std::string& name : {std::string("Año 'x' \"y\" ; # %s $(id).pdf"), std::string(" .. "),
                                    std::string("..."), std::string("-rf"), std::string("a\nb"), longest}) {
        write(dir / "src" / name, name);
        ASSERT_EQ(a.add("5", dir / "src" / name), name);
        ASSERT_TRUE(a.find("5", name));
        EXPECT_EQ(read(*a.find("5", name)), name);
        EXPECT_TRUE(a.remove("5", name));
    }
    for (const char* name : {"a\\b.pdf", "..\\x", "malo\xff\xfe.pdf", "\xc3"}) {
        write(dir / "src" / name, "x");
        EXPECT_FALSE(a.add("5", dir / "src" / name)) << name;
    }
    fs::create_directory(dir / "src" / "carpeta");
    fs::create_symlink(dir / "no_hay", dir / "src" / "colgado");
    EXPECT_FALSE(a.add("5", dir / "src" / "carpeta"));
    EXPECT_FALSE(a.add("5", dir / "src" / "colgado"));
    EXPECT_FALSE(a.add("5", dir / "src" / ".."));
    EXPECT_FALSE(fs::exists(dir / "adjunto/D/5"));
}

TEST_F(Files, ALinkInTheFolderIsNotFollowed) {
    const Attachments a(dir, "D");
    write(dir / "src" / "f.pdf", "uno");
    write(dir / "fuera", "ajeno");
    fs::create_directories(dir / "adjunto/D/5");
    fs::create_symlink(dir / "fuera", dir / "adjunto/D/5/f.pdf");
    EXPECT_FALSE(a.find("5", "f.pdf"));
    EXPECT_FALSE(a.save_copy("5", "f.pdf", dir / "copia"));
    EXPECT_FALSE(a.remove("5", "f.pdf"));
    ASSERT_TRUE(a.add("5", dir / "src" / "f.pdf"));
    EXPECT_EQ(read(dir / "fuera") + read(dir / "adjunto/D/5/f.pdf"), "ajenouno");
    fs::create_directory(dir / "adjunto/D/5/g.pdf"); // a folder in the file's place stays
    write(dir / "src" / "g.pdf", "dos");
    EXPECT_FALSE(a.add("5", dir / "src" / "g.pdf"));
    EXPECT_TRUE(fs::is_directory(dir / "adjunto/D/5/g.pdf"));
}

TEST_F(Files, AReadOnlyFolderChangesNothing) {
    const Attachments a(dir, "D");
    write(dir / "src" / "f.pdf", "uno");
    ASSERT_TRUE(a.add("5", dir / "src" / "f.pdf"));
    write(dir / "src" / "g.pdf", "dos");
    fs::permissions(dir / "adjunto/D/5",
                    fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_all);
    fs::permissions(dir / "adjunto/D/5", fs::perms::others_write, fs::perm_options::remove);
    {
        const apoyo::Cualquiera anybody;
        EXPECT_FALSE(a.add("5", dir / "src" / "g.pdf") || a.remove("5", "f.pdf"));
        EXPECT_TRUE(getuid() != 0 || !a.add("6", dir / "src" / "g.pdf"))
            << "no new set in a folder of someone else's";
    }
    fs::permissions(dir / "adjunto/D/5", fs::perms::owner_all);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir / "adjunto/D/5"), {}), 1);
}

TEST_F(Files, AFullDiskLeavesTheFileThatWasThere) {
    const Attachments a(dir, "D");
    write(dir / "src" / "f.pdf", "uno");
    ASSERT_TRUE(a.add("5", dir / "src" / "f.pdf"));
    write(dir / "src" / "f.pdf", std::string(1 << 16, 'x'));
    {
        const apoyo::ArchivosCortos full(4096);
        EXPECT_FALSE(a.add("5", dir / "src" / "f.pdf"));
        EXPECT_TRUE(a.save_copy("5", "f.pdf", dir / "copia.pdf") && a.copy_set("5", "6", {"f.pdf"}))
            << "small enough for what is left";
    }
    EXPECT_EQ(read(dir / "adjunto/D/5/f.pdf"), "uno");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir / "adjunto/D/5"), {}), 1)
        << "nothing half copied stays";
    EXPECT_FALSE(a.save_copy("5", "f.pdf", "/dev/full"));
    EXPECT_TRUE(fs::is_character_file("/dev/full")) << "a device is written, never replaced";
}

} // namespace
