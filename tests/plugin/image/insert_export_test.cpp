// Vandrel_InsertImage, Vandrel_InsertFile and Vandrel_ExportField through the host: the streams an
// insert makes, the reference texts, the files an export writes, and how each failure reads.
#include "image_test_support.h"
#include "loopback_server.h"

#include <api/fnam.h>

#include <filesystem>

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace vdtest {
namespace {

namespace fs = std::filesystem;

const Picture kPicture = MakePicture(30, 20, [](int x, int y) { return Rgb{uint8_t(x * 8), uint8_t(y * 12), 77}; });

class InsertExportTest : public ImageSessionTest {
protected:
    // A picture file of the type, written through the plug-in's own converter (a PICT with the
    // 512-byte file header a PICT file has).
    std::string PictureFile(const std::string& name, const char* type) {
        std::string bytes = StreamOf(Convert(ContainerWith("BMPf", BmpOf(kPicture)), type), type);
        if (std::string(type) == "PICT") bytes = std::string(512, '\0') + bytes;
        return Write(name, bytes);
    }
    FMX_Data InsertImage(const std::string& path, bool byReference) {
        return Eval(u"Vandrel_InsertImage ( $a ; $b )", {vdhost::makeTextUtf8(path), vdhost::makeBoolean(byReference)});
    }
    FMX_Data InsertFile(const std::string& path, bool byReference, bool asText) {
        return Eval(u"Vandrel_InsertFile ( $a ; $b ; $c )",
                    {vdhost::makeTextUtf8(path), vdhost::makeBoolean(byReference), vdhost::makeBoolean(asText)});
    }
    std::string Export(const FMX_Data& container, const std::string& path, bool replace) {
        return Text(u"Vandrel_ExportField ( $a ; $b ; $c )", {container, vdhost::makeTextUtf8(path), vdhost::makeBoolean(replace)});
    }
    // The hidden names in the test's folder: where a temporary file left behind would show.
    std::vector<std::string> HiddenNames() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(root_.path()))
            if (entry.path().filename().string().starts_with(".")) names.push_back(entry.path().filename().string());
        return names;
    }
};

std::string SizeBytes(int w, int h) { return {char(w >> 8), char(w), char(h >> 8), char(h)}; }

TEST_F(InsertExportTest, EmbeddedPicturesCarryWhatTheHostNeedsToShowThem) {
    EXPECT_EQ(StreamTypes(InsertImage(PictureFile("a.gif", "GIFf"), false)), "GIFf|SIZE|JPEG");
    const FMX_Data jpeg = InsertImage(PictureFile("a.jpg", "JPEG"), false);
    EXPECT_EQ(StreamTypes(jpeg), "JPEG|SIZE");
    EXPECT_EQ(StreamOf(jpeg, "JPEG"), readFile(Path("a.jpg")));
    EXPECT_EQ(StreamOf(jpeg, "SIZE"), SizeBytes(30, 20));

    const std::string pict = PictureFile("a.pct", "PICT");
    const FMX_Data embedded = InsertImage(pict, false);
    EXPECT_EQ(StreamTypes(embedded), "PICT|SIZE");
    EXPECT_EQ(StreamOf(embedded, "PICT"), readFile(pict).substr(512));

    // A format read whole into memory by its library is still inserted from its file.
    const FMX_Data bmp = InsertImage(Write("a.bmp", BmpOf(kPicture)), false);
    EXPECT_EQ(StreamTypes(bmp), "BMPf|SIZE|JPEG");
    EXPECT_EQ(StreamOf(bmp, "BMPf"), BmpOf(kPicture));

    Text(u"Vandrel_SetImageDefaults ( -1 ; 1 )");
    EXPECT_EQ(StreamTypes(InsertImage(PictureFile("a.png", "PNGf"), false)), "PNGf|SIZE");

    EXPECT_EQ(vdhost::utf8Of(InsertImage(Path("missing.png"), false)),
              "$-43:Vandrel_InsertImage: Could not find referenced image file");
    EXPECT_EQ(vdhost::utf8Of(InsertImage(Write("not.png", "no picture here"), false)),
              "$-2003:Vandrel_InsertImage: Could not find QT importer for this type.");
}

TEST_F(InsertExportTest, ReferencesNameTheFileFromTheDatabaseFolderAndAbsolutely) {
    EXPECT_EQ(vdhost::utf8Of(InsertImage(PictureFile("b.bmp", "BMPf"), true)),
              "size:30,20\rimagemac:b.bmp\rimagemac:" + Path("b.bmp"));
    fs::create_directory(root_.path() / "sub");
    EXPECT_EQ(vdhost::utf8Of(InsertFile(Write("sub/n.txt", "x"), true, false)),
              "size:0,0\rfilemac:sub/n.txt\rfilemac:" + Path("sub/n.txt"));

    // What a reference names is found again: its picture converts.
    const FMX_Data stored = vdhost::makeContainer({}, vdhost::utf8ToUtf16(vdhost::utf8Of(InsertImage(Path("b.bmp"), true))));
    EXPECT_EQ(StreamTypes(Convert(stored, "PNGf")), "PNGf|SIZE|JPEG");

    EXPECT_EQ(vdhost::utf8Of(InsertFile(Path("nothing.txt"), true, false)),
              "$-43:Vandrel_InsertFile: Could not find referenced file");
}

TEST_F(InsertExportTest, WebSourcesAreEmbeddedButNeverHeldByReference) {
    ScopedEnv timeout("VANDREL_WEB_TIMEOUT", "2");
    const std::string gif = StreamOf(Convert(ContainerWith("BMPf", BmpOf(kPicture)), "GIFf"), "GIFf");
    LoopbackServer server(gif);
    const std::string url = server.Url("/picture");

    const FMX_Data image = InsertImage(url, false);
    EXPECT_EQ(StreamTypes(image), "GIFf|SIZE|JPEG");
    EXPECT_EQ(StreamOf(image, "GIFf"), gif);
    const FMX_Data file = InsertFile(url, false, false);
    EXPECT_EQ(StreamOf(file, "FILE"), gif);

    EXPECT_EQ(vdhost::utf8Of(InsertImage(url, true)), "$0:Vandrel_InsertImage: Source must be a file to import by reference");
    EXPECT_EQ(vdhost::utf8Of(InsertFile(url, true, false)), "$0:Vandrel_InsertFile: Source must be a file to import by reference");
    EXPECT_EQ(vdhost::utf8Of(InsertFile(server.Url("/gone"), false, false)),
              "$-43:Vandrel_InsertFile: Error reading target data");
}

TEST_F(InsertExportTest, FilesComeInAsTextOrAsTheirBytesWithTheirName) {
    EXPECT_EQ(vdhost::utf8Of(InsertFile(Write("u.txt", "gr\xC3\xBC\xC3\x9F" "e\r2"), false, true)), "gr\xC3\xBC\xC3\x9F" "e\r2");
    // Bytes that are not UTF-8 keep one character each.
    EXPECT_EQ(vdhost::utf8Of(InsertFile(Write("l.txt", "caf\xE9"), false, true)), "caf\xC3\xA9");

    const std::string bytes("\x00\x01binary\xFF", 9);
    const FMX_Data file = InsertFile(Write("data.bin", bytes), false, false);
    ASSERT_EQ(StreamTypes(file), "FILE|FNAM");
    EXPECT_EQ(StreamOf(file, "FILE"), bytes);
    const std::string fnam = StreamOf(file, "FNAM");
    const auto name = vdhost::decodeFnam(vdhost::Bytes(fnam.begin(), fnam.end()));
    ASSERT_TRUE(name);
    EXPECT_EQ(vdhost::utf16ToUtf8(*name), "filemac:" + Path("data.bin"));

    // The way back: the same bytes, under the name given (no extension is known for a file).
    EXPECT_EQ(Export(file, "back", false), "");
    EXPECT_EQ(readFile(Path("back")), bytes);
}

TEST(InsertFileOnOlderHosts, HostsBeforeFileNamesGetTheBytesAlone) {
    TempFolder root;
    ScopedEnv tmp("TMPDIR", root.path().string());
    vdhost::SessionOptions options = BundleSession(root.path() / "Base.vddb");
    options.identity = {50, u"ProAdvanced 7.0v3"};
    vdhost::Session session(options);
    writeFile(root / "f.bin", "abc");
    EXPECT_EQ(StreamTypes(EvaluateWith(session, u"Vandrel_InsertFile ( $a ; 0 ; 0 )", {vdhost::makeTextUtf8((root / "f.bin").string())})),
              "FILE");
}

TEST_F(InsertExportTest, ExportWritesTheFileTheContainerCameFrom) {
    const std::string pict = PictureFile("p.pct", "PICT");
    EXPECT_EQ(Export(InsertImage(pict, false), "pict-out", false), "");
    const std::string written = readFile(Path("pict-out.pct"));
    ASSERT_EQ(written.size(), readFile(pict).size());
    EXPECT_EQ(written.substr(512), readFile(pict).substr(512));

    const std::string png = StreamOf(Convert(ContainerWith("BMPf", BmpOf(kPicture)), "PNGf"), "PNGf");
    EXPECT_EQ(Export(ContainerWith("VDIM", "PNGf" + png), "wrapped", false), "");
    EXPECT_EQ(readFile(Path("wrapped.png")), png);

    const FMX_Data jpeg = InsertImage(PictureFile("j.jpg", "JPEG"), false);
    EXPECT_EQ(Export(jpeg, "photo", false), "");
    EXPECT_EQ(Export(jpeg, "photo.jpeg", false), "");
    EXPECT_EQ(readFile(Path("photo.jpg")), readFile(Path("j.jpg")));
    EXPECT_EQ(readFile(Path("photo.jpeg")), readFile(Path("j.jpg")));

    EXPECT_EQ(Export(vdhost::makeTextUtf8("line one\rt\xC3\xA9xt"), "note", false), "");
    EXPECT_EQ(readFile(Path("note.txt")), "line one\rt\xC3\xA9xt");

    // A container stored by reference: its file is copied.
    const FMX_Data stored = vdhost::makeContainer({}, vdhost::utf8ToUtf16(vdhost::utf8Of(InsertImage(pict, true))));
    EXPECT_EQ(Export(stored, "copied.pct", false), "");
    EXPECT_EQ(readFile(Path("copied.pct")), readFile(pict));
    EXPECT_EQ(Export(stored, "copied.pct", false),
              "$20200:Vandrel_ExportField: Target file already exists and replace flag is false");
}

TEST_F(InsertExportTest, AnExistingFileIsReplacedWholeOrNotAtAll) {
    const FMX_Data jpeg = ContainerWith("JPEG", std::string(5000, 'n'));
    const std::string target = Write("old.jpg", "old");
    EXPECT_EQ(Export(jpeg, target, false), "$20200:Vandrel_ExportField: Target file already exists and replace flag is false");
    EXPECT_EQ(readFile(target), "old");

    chmod(target.c_str(), 0444);  // locked
    EXPECT_EQ(Export(jpeg, target, true),
              "$-54:Vandrel_ExportField: Could not overwrite existing file (busy, locked, permissions)");
    EXPECT_EQ(readFile(target), "old");
    chmod(target.c_str(), 0640);

    {
        // A file system that takes no more than 1000 bytes of a file.
        struct sigaction ignore {}, old {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &old);
        rlimit limit{}, saved{};
        getrlimit(RLIMIT_FSIZE, &saved);
        limit = saved;
        limit.rlim_cur = 1000;
        setrlimit(RLIMIT_FSIZE, &limit);
        const std::string answer = Export(jpeg, target, true);
        setrlimit(RLIMIT_FSIZE, &saved);
        sigaction(SIGXFSZ, &old, nullptr);
        EXPECT_EQ(answer, "$-36:Vandrel_ExportField: Could not write to file (disk space, permissions)");
        EXPECT_EQ(readFile(target), "old");
    }

    EXPECT_EQ(Export(jpeg, target, true), "");
    EXPECT_EQ(readFile(target), std::string(5000, 'n'));
    struct stat info {};
    stat(target.c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u);  // the replaced file's permissions stay
    EXPECT_TRUE(HiddenNames().empty());
}

TEST_F(InsertExportTest, EveryFailureSaysWhichStepFailed) {
    const FMX_Data jpeg = ContainerWith("JPEG", "j");
    fs::create_directory(root_.path() / "folder");
    fs::create_directory(root_.path() / "named.jpg");
    EXPECT_EQ(Export(jpeg, Path("folder"), false), "$-1302:Vandrel_ExportField: Target must specify a file, not a directory");
    // The extension is added first, and the name it makes is a folder.
    EXPECT_EQ(Export(jpeg, Path("named"), false), "$-1302:Vandrel_ExportField: Target must specify a file, not a directory");
    EXPECT_EQ(Export(jpeg, Path("no/such/x.jpg"), false), "$-43:Vandrel_ExportField: Bad path or filename");
    const std::string proc = Export(jpeg, "/proc/self/x.jpg", false);
    EXPECT_TRUE(proc.starts_with("$") && proc.ends_with(": Could not export file (disk space, permissions)")) << proc;
    EXPECT_EQ(Export(vdhost::makeTextUtf8(""), "e.txt", false), "$20103:Vandrel_ExportField: Empty Container");
    EXPECT_EQ(Export(ContainerWith("SIZE", SizeBytes(1, 1)), "s", false),
              "$20400:Vandrel_ExportField: Parameter must be image or path");
    EXPECT_EQ(Export(vdhost::makeContainer({}, u"missing.jpg"), "m.jpg", false),
              "$-43:Vandrel_ExportField: Source item not found");
}

TEST_F(InsertExportTest, AResourceForkGoesIntoItsAttribute) {
    if (setxattr(Write("probe", "").c_str(), "user.vandrel-probe", "1", 1, 0) != 0)
        GTEST_SKIP() << "this file system keeps no user attributes";
    FMX_BinaryData binary = ContainerWith("FILE", "data fork").binary;
    binary.streams.push_back(ContainerWith("FORK", "resource fork").binary.streams[0]);
    EXPECT_EQ(Export(vdhost::makeContainer(binary), "forked", false), "");
    EXPECT_EQ(readFile(Path("forked")), "data fork");
    char fork[64] = {};
    EXPECT_EQ(getxattr(Path("forked").c_str(), "user.com.apple.ResourceFork", fork, sizeof fork), 13);
    EXPECT_EQ(std::string(fork), "resource fork");

    // No file system keeps an attribute this large: nothing of the file is left.
    binary.streams.back().bytes = std::make_shared<const vdhost::StreamBytes>(vdhost::Bytes(size_t(200000), uint8_t('r')));
    const std::string answer = Export(vdhost::makeContainer(binary), "too-big", false);
    EXPECT_NE(answer.find(": Could not write to resource fork (disk space, permissions)"), std::string::npos) << answer;
    EXPECT_FALSE(fs::exists(Path("too-big")));
    EXPECT_TRUE(HiddenNames().empty());
}

}  // namespace
}  // namespace vdtest
