// Runs a fuzz target's LLVMFuzzerTestOneInput once on every input given on the command line
// (files, or directories whose regular files are taken in name order). Used where libFuzzer is
// not linked in, so the seeds and the regression inputs run as ordinary tests. A failing input
// aborts inside the target; the name of the input being run is printed first to find it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

namespace fs = std::filesystem;

bool ReadAll(const fs::path& path, std::vector<uint8_t>& bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return !in.bad();
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s FILE_OR_DIRECTORY...\n", argv[0]);
    return 2;
  }
  std::vector<fs::path> files;
  for (int i = 1; i < argc; ++i) {
    fs::path arg = argv[i];
    std::error_code ec;
    if (fs::is_directory(arg, ec)) {
      std::vector<fs::path> inDir;
      for (const fs::directory_entry& e : fs::directory_iterator(arg, ec)) {
        if (e.is_regular_file()) inDir.push_back(e.path());
      }
      if (ec) {
        std::fprintf(stderr, "%s: cannot list: %s\n", argv[i], ec.message().c_str());
        return 2;
      }
      std::sort(inDir.begin(), inDir.end());
      files.insert(files.end(), inDir.begin(), inDir.end());
    } else if (fs::is_regular_file(arg, ec)) {
      files.push_back(arg);
    } else {
      std::fprintf(stderr, "%s: no such file or directory\n", argv[i]);
      return 2;
    }
  }
  std::vector<uint8_t> bytes;
  for (const fs::path& f : files) {
    if (!ReadAll(f, bytes)) {
      std::fprintf(stderr, "%s: cannot read\n", f.c_str());
      return 2;
    }
    std::fprintf(stderr, "running %s (%zu bytes)\n", f.c_str(), bytes.size());
    // A heap copy of exactly the input's size, so reading past its end is caught by the
    // sanitizers (a vector's spare capacity would hide it).
    std::unique_ptr<uint8_t[]> exact(new uint8_t[bytes.size() + (bytes.empty() ? 1 : 0)]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    LLVMFuzzerTestOneInput(exact.get(), bytes.size());
  }
  std::fprintf(stderr, "%zu inputs ran\n", files.size());
  return 0;
}
