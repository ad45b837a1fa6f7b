// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "VirtualTable.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <link.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <regex>

namespace {

// What the dynamic linker knows of the symbol at an address.
struct Symbol {
  std::string name;
  std::size_t size = 0;  // in bytes
  bool isFunction = false;
};

Symbol SymbolAt(const void* address) {
  Dl_info info{};
  void* found = nullptr;
  if (dladdr1(address, &info, &found, RTLD_DL_SYMENT) == 0 || !found) return {};
  const auto* entry = static_cast<const ElfW(Sym)*>(found);
  // Encoded alike in the symbols of 32 and 64 bits.
  const bool isFunction = ELF32_ST_TYPE(entry->st_info) == STT_FUNC;
  return {info.dli_sname, entry->st_size, isFunction};
}

std::string Demangled(const std::string& symbol) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status),
      &std::free);
  return status == 0 ? name.get() : symbol;
}

std::string WithoutClass(const std::string& name) {
  static const std::regex destructor(R"(\w+::~.*)");
  static const std::regex qualifier(R"(\w+::(?=\w+(\[[^\]]*\])?\())");
  static const std::regex abiTag(R"(\[[^\]]*\])");
  static const std::regex string(
      "std::__cxx11::basic_string<char, std::char_traits<char>, "
      "std::allocator<char> >");
  std::string text = std::regex_replace(name, destructor, "~");
  text = std::regex_replace(text, string, "std::string");
  text = std::regex_replace(text, qualifier, "");
  text = std::regex_replace(text, abiTag, "");
  return std::regex_replace(text, std::regex("^non-virtual "), "");
}

// Empty for words that are no operations: distances between bases, the type
// information, and the destructors of an abstract class.
std::string OperationAt(const void* address) {
  const Symbol symbol = SymbolAt(address);
  if (symbol.name == "__cxa_pure_virtual") return "pure";
  return symbol.isFunction ? WithoutClass(Demangled(symbol.name)) : "";
}

}  // namespace

std::vector<std::string> VirtualTable(const std::string& className) {
  const std::string symbolName =
      "_ZTV" + std::to_string(className.size()) + className;
  const auto* table =
      static_cast<const char*>(dlsym(RTLD_DEFAULT, symbolName.c_str()));
  if (!table) return {};

  std::vector<std::string> operations;
  const std::size_t size = SymbolAt(table).size;
  for (std::size_t at = 0; at < size; at += sizeof(void*)) {
    const void* word = nullptr;
    std::memcpy(&word, table + at, sizeof word);
    const std::string operation = OperationAt(word);
    if (!operation.empty()) operations.push_back(operation);
  }
  return operations;
}
