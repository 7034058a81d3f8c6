#include "search/extraction/Documents.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <zip.h>

#include "support/TestDatabase.h"

namespace torvex::test {

std::string archiveOf(const ArchiveFiles& files, const std::string& password) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/archive.zip";
    zip_t* archive = ::zip_open(path.c_str(), ZIP_CREATE, nullptr);
    for (const auto& [name, content] : files) {
        zip_source_t* source = ::zip_source_buffer(archive, content.data(), content.size(), 0);
        const zip_int64_t index = ::zip_file_add(archive, name.c_str(), source, 0);
        if (!password.empty()) {
            ::zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), ZIP_EM_AES_128,
                                      password.c_str());
        }
    }
    if (::zip_close(archive) != 0) throw std::runtime_error("the archive can't be written");
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string docxOf(const std::string& body, const ArchiveFiles& more) {
    ArchiveFiles files{
        {"[Content_Types].xml", "<Types/>"},
        {"word/document.xml", "<w:document xmlns:w=\"w\"><w:body>" + body + "</w:body></w:document>"}};
    files.insert(files.end(), more.begin(), more.end());
    return archiveOf(files);
}

std::string odtOf(const std::string& body, const ArchiveFiles& more) {
    ArchiveFiles files{
        {"mimetype", "application/vnd.oasis.opendocument.text"},
        {"content.xml", "<office:document-content xmlns:office=\"o\" xmlns:text=\"t\"><office:body>" + body +
                            "</office:body></office:document-content>"}};
    files.insert(files.end(), more.begin(), more.end());
    return archiveOf(files);
}

std::string pdfOf(const std::string& line, const std::string& trailer) {
    const std::string drawing = "BT /F 12 Tf 20 100 Td (" + line + ") Tj ET";
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 400 200]/Contents 4 0 R/Resources<</Font<</F 5 0 "
           "R>>>>>>endobj\n"
           "4 0 obj<</Length " +
           std::to_string(drawing.size()) + ">>stream\n" + drawing +
           "\nendstream\nendobj\n"
           "5 0 obj<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>endobj\n"
           "trailer<</Root 1 0 R" +
           trailer + ">>\n%%EOF\n";
}

std::string mappedPdf(const std::string& signs, const std::string& map) {
    const auto stream = [](const std::string& text) {
        return "<</Length " + std::to_string(text.size()) + ">>stream\n" + text + "\nendstream\nendobj\n";
    };
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
           "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
           "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 400 200]/Contents 4 0 R/Resources<</Font<</F 5 0 "
           "R>>>>>>endobj\n"
           "4 0 obj" +
           stream("BT /F 12 Tf 20 100 Td <" + signs + "> Tj ET") +
           "5 0 obj<</Type/Font/Subtype/Type0/BaseFont/ABCDEF+Cut/Encoding/Identity-H/DescendantFonts[6 0 R]"
           "/ToUnicode 8 0 R>>endobj\n"
           "6 0 obj<</Type/Font/Subtype/CIDFontType2/BaseFont/ABCDEF+Cut/CIDSystemInfo<</Registry(Adobe)"
           "/Ordering(Identity)/Supplement 0>>/FontDescriptor 7 0 R/DW 600>>endobj\n"
           "7 0 obj<</Type/FontDescriptor/FontName/ABCDEF+Cut/Flags 4/FontBBox[0 0 600 800]/ItalicAngle 0"
           "/Ascent 800/Descent 0/CapHeight 700/StemV 80>>endobj\n"
           "8 0 obj" +
           stream(
               "/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n"
               "1 begincodespacerange <0000> <FFFF> endcodespacerange\n" +
               map + "\nendcmap end end") +
           "trailer<</Root 1 0 R>>\n%%EOF\n";
}

std::string lockedPdf() {
    const std::string key(64, 'a');
    return pdfOf("secret", "/ID[<" + key + "><" + key + ">]/Encrypt<</Filter/Standard/V 1/R 2/P -4/O<" + key +
                               ">/U<" + key + ">>>");
}

}  // namespace torvex::test
