// The bytes of a document as TinyXML prints them to a file.
#pragma once

#include <tinyxml.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

#include "model/profile_document.h"

namespace kvn::model::test {

// A private file that is removed afterwards.
class ScratchFile {
public:
    ScratchFile() : path(std::filesystem::temp_directory_path() / UniqueName()) {
        stream.reset(std::fopen(path.string().c_str(), "w+b"));
        if (!stream) throw std::runtime_error("no scratch file: " + path.string());
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() {
        stream.reset();
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }

    FILE* Stream() const { return stream.get(); }

    std::string Contents() const {
        std::string bytes(static_cast<std::size_t>(std::ftell(stream.get())), '\0');
        std::rewind(stream.get());
        if (std::fread(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size())
            throw std::runtime_error("short read");
        return bytes;
    }

private:
    struct CloseStream {
        void operator()(FILE* opened) const { static_cast<void>(std::fclose(opened)); }
    };

    static std::string UniqueName() {
        static std::atomic<unsigned> counter;
        std::random_device device;
        return "model-tests-" + std::to_string(device()) + '-' + std::to_string(++counter) + ".xml";
    }

    std::filesystem::path path;
    std::unique_ptr<FILE, CloseStream> stream;
};

inline std::string Printed(const TiXmlDocument& document) {
    const ScratchFile file;
    if (!document.SaveFile(file.Stream())) throw std::runtime_error("the document cannot be printed");
    return file.Contents();
}

inline std::string Written(const ProfileSet& profiles, const TextCodec& codec) {
    TiXmlDocument document;
    BuildProfileDocument(profiles, codec, document);
    return Printed(document);
}

inline constexpr wchar_t kArbitraryKeyText[] = L"Arbitrary key";

inline ProfileSet Parsed(const std::string& document, const TextCodec& codec) {
    return ParseProfileDocument(document, DefaultProfileRecord(), {codec, kArbitraryKeyText});
}

}  // namespace kvn::model::test
