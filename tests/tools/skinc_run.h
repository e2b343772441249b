/* Running skinc as its users do, in a folder of its own. */
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tavix_test {

struct SkincRun {
    int exitCode = -1;
    std::string output;
    std::string errors;
};

/* A folder for one test; goes with the object. */
class WorkFolder {
public:
    WorkFolder();
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    std::filesystem::path operator/(const char* name) const { return m_path / name; }
    void Write(const char* name, const std::string& contents) const;
    std::string Read(const char* name) const;
    bool Has(const char* name) const { return std::filesystem::exists(m_path / name); }
    /* Runs skinc with this folder as the current one. */
    SkincRun Skinc(const std::string& arguments) const;

private:
    std::filesystem::path m_path;
};

/* The bytes of a PNG file of 8 bits a channel, RGBA. */
std::string PngBytes(int width, int height, const std::vector<DWORD>& rgba);
/* One colour, 0xRRGGBBAA. */
std::string FlatPng(int width, int height, DWORD rgba);
/* The bytes of a monochrome BMP file, two pixels wide and high: a chequer. */
std::string ChequerBmp();

}  // namespace tavix_test
