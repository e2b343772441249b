#include "tools/skinc_run.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>

namespace tavix_test {

namespace {

std::filesystem::path ProgramFolder() {
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path(path).parent_path();
}

std::string ReadWhole(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

HANDLE OutputFile(const std::filesystem::path& file) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    return ::CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

void Append(std::string& bytes, DWORD bigEndian) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(bigEndian >> shift);
}

DWORD Crc(const std::string& bytes) {
    DWORD crc = 0xFFFFFFFF;
    for (const char c : bytes) {
        crc ^= static_cast<BYTE>(c);
        for (int bit = 0; bit < 8; ++bit) crc = crc & 1 ? crc >> 1 ^ 0xEDB88320 : crc >> 1;
    }
    return ~crc;
}

DWORD Adler(const std::string& bytes) {
    DWORD a = 1;
    DWORD b = 0;
    for (const char c : bytes) {
        a = (a + static_cast<BYTE>(c)) % 65521;
        b = (b + a) % 65521;
    }
    return b << 16 | a;
}

std::string Chunk(const std::string& kind, const std::string& data) {
    std::string chunk;
    Append(chunk, static_cast<DWORD>(data.size()));
    chunk += kind + data;
    Append(chunk, Crc(kind + data));
    return chunk;
}

}  // namespace

WorkFolder::WorkFolder() {
    static int count = 0;
    m_path = std::filesystem::temp_directory_path() /
             ("skinc-test-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count));
    std::filesystem::create_directories(m_path);
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void WorkFolder::Write(const char* name, const std::string& contents) const {
    std::ofstream stream(m_path / name, std::ios::binary);
    stream << contents;
    EXPECT_TRUE(stream.flush()) << name;
}

std::string WorkFolder::Read(const char* name) const { return ReadWhole(m_path / name); }

SkincRun WorkFolder::Skinc(const std::string& arguments) const {
    std::wstring line = L"\"" + (ProgramFolder() / "skinc.exe").wstring() + L"\" " +
                        std::wstring(arguments.begin(), arguments.end());
    const std::filesystem::path outputFile = m_path / "skinc.out";
    const std::filesystem::path errorFile = m_path / "skinc.err";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = OutputFile(outputFile);
    start.hStdError = OutputFile(errorFile);
    start.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    PROCESS_INFORMATION process{};
    SkincRun run;
    const bool started = ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                          m_path.c_str(), &start, &process);
    EXPECT_TRUE(started) << "skinc.exe does not start";
    if (started) {
        EXPECT_EQ(::WaitForSingleObject(process.hProcess, 60'000), WAIT_OBJECT_0);
        DWORD code = 0;
        ::GetExitCodeProcess(process.hProcess, &code);
        run.exitCode = static_cast<int>(code);
        ::CloseHandle(process.hThread);
        ::CloseHandle(process.hProcess);
    }
    ::CloseHandle(start.hStdOutput);
    ::CloseHandle(start.hStdError);
    run.output = ReadWhole(outputFile);
    run.errors = ReadWhole(errorFile);
    std::error_code ignored;
    std::filesystem::remove(outputFile, ignored);
    std::filesystem::remove(errorFile, ignored);
    return run;
}

std::string PngBytes(int width, int height, const std::vector<DWORD>& rgba) {
    std::string raw;
    for (int y = 0; y < height; ++y) {
        raw += '\0';
        for (int x = 0; x < width; ++x) Append(raw, rgba[static_cast<std::size_t>(y * width + x)]);
    }
    // Deflate without compression: one stored block holds up to 65,535 bytes.
    EXPECT_LT(raw.size(), 65536u);
    const auto length = static_cast<WORD>(raw.size());
    std::string zlib("\x78\x01\x01", 3);
    for (const WORD word : {length, static_cast<WORD>(~length)}) {
        zlib += static_cast<char>(word & 0xFF);
        zlib += static_cast<char>(word >> 8);
    }
    zlib += raw;
    Append(zlib, Adler(raw));

    std::string header;
    Append(header, static_cast<DWORD>(width));
    Append(header, static_cast<DWORD>(height));
    header += std::string("\x08\x06\x00\x00\x00", 5);
    return "\x89PNG\r\n\x1a\n" + Chunk("IHDR", header) + Chunk("IDAT", zlib) + Chunk("IEND", "");
}

std::string FlatPng(int width, int height, DWORD rgba) {
    return PngBytes(width, height, std::vector<DWORD>(static_cast<std::size_t>(width * height), rgba));
}

std::string ChequerBmp() {
    const BITMAPFILEHEADER file{0x4D42, 70, 0, 0, 62};
    const BITMAPINFOHEADER info{sizeof info, 2, 2, 1, 1, BI_RGB, 8, 0, 0, 0, 0};
    const std::array<BYTE, 16> rest{0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0, 0x80, 0, 0, 0, 0x40, 0, 0, 0};
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    bytes.append(reinterpret_cast<const char*>(rest.data()), rest.size());
    return bytes;
}

}  // namespace tavix_test
