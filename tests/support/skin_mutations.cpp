#include "support/skin_mutations.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>

#include "support/compound_platform.h"
#include "tavixskin/skin_layout.h"

namespace tavix_test {
namespace {

using tavix::test::CompoundContents;
using tavix::test::CompoundElement;
using tavix::test::CompoundImage;
using tavix::test::CompoundLayout;
using tavix::test::PlatformCompound;
using tavix::test::Xorshift;

using Bytes = std::vector<std::byte>;
using Content = std::vector<CompoundElement>;

Content AsTree(const CompoundContents& contents) {
    Content root;
    for (const auto& [path, bytes] : contents) {
        const std::size_t slash = path.find(u'/');
        if (slash == std::u16string::npos) {
            root.push_back({path, false, bytes, {}});
        } else if (slash + 1 == path.size()) {
            root.push_back({path.substr(0, slash), true, {}, {}});
        } else {
            root.back().children.push_back({path.substr(slash + 1), false, bytes, {}});
        }
    }
    return root;
}

Bytes AsFile(const Content& content) { return CompoundImage(content, CompoundLayout{}).bytes; }

void Put(Bytes& bytes, std::size_t at, std::uint32_t value, std::size_t width) {
    if (at + width <= bytes.size()) std::memcpy(bytes.data() + at, &value, width);
}

void Randomise(Bytes& bytes, std::size_t at, std::size_t count, Xorshift& random) {
    const std::size_t end = std::min(at + count, bytes.size());
    for (std::size_t i = at; i < end; ++i) bytes[i] = static_cast<std::byte>(random.Next());
}

// A number that code is likely to stumble over.
std::uint32_t Awkward(Xorshift& random) {
    static constexpr std::uint32_t kNumbers[] = {
        0,      1,      2,          0xFFFFFFFF, 0x80000000, 0x7FFFFFFF, 0x40000000, 0x10000,
        0xFFFF, 0x8000, 0xFFFFFFFE, 0x20000001, 0x3FFFFFFF, 40,         54,         12,
    };
    return random.Below(4) ? kNumbers[random.Below(std::size(kNumbers))] : random.Next();
}

// The index of an element of a container that isn't empty.
template <class Container>
std::uint32_t SomeIndex(const Container& container, Xorshift& random) {
    return random.Below(static_cast<std::uint32_t>(container.size()));
}

CompoundElement& SomeRecord(Content& content, Xorshift& random) {
    for (;;) {
        CompoundElement& element = content[SomeIndex(content, random)];
        if (element.is_storage && !element.children.empty()) return element;
    }
}

CompoundElement& SomeStream(Content& content, Xorshift& random) {
    CompoundElement& record = SomeRecord(content, random);
    return record.children[SomeIndex(record.children, random)];
}

// A stream that holds a picture; some records have none.
CompoundElement& SomeBitmap(Content& content, Xorshift& random) {
    for (;;) {
        CompoundElement& stream = SomeStream(content, random);
        if (stream.name != u"Data") return stream;
    }
}

// A record's image and its layout.
struct RecordPlace {
    Bytes* data;
    const TSkinRecordLayout* layout;
};

RecordPlace SomeRecordImage(Content& content, Xorshift& random) {
    for (;;) {
        CompoundElement& record = SomeRecord(content, random);
        for (int kind = 0; kind < TAVIX_RECORD_COUNT; ++kind) {
            const TSkinRecordLayout* layout = GetSkinRecordLayout(static_cast<TSkinType>(kind));
            const std::string storage = layout->storage;
            if (record.name != std::u16string(storage.begin(), storage.end())) continue;
            for (CompoundElement& stream : record.children)
                if (stream.name == u"Data") return {&stream.data, layout};
        }
    }
}

void FlipBytes(Bytes& file, Xorshift& random) {
    for (std::uint32_t count = 1 + random.Below(16); count; --count)
        file[SomeIndex(file, random)] ^= static_cast<std::byte>(1 + random.Below(255));
}

void FlipBytesOfStructure(Bytes& file, Xorshift& random) {
    const auto reach = std::min<std::uint32_t>(4096, static_cast<std::uint32_t>(file.size()));
    for (std::uint32_t count = 1 + random.Below(4); count; --count)
        file[random.Below(reach)] ^= static_cast<std::byte>(1 + random.Below(255));
}

void CutFile(Bytes& file, Xorshift& random) { file.resize(SomeIndex(file, random)); }

void RemoveElements(Content& content, Xorshift& random) {
    for (std::uint32_t count = 1 + random.Below(3); count; --count) {
        if (random.Below(4) == 0) {
            if (content.size() > 4) content.erase(content.begin() + SomeIndex(content, random));
            continue;
        }
        Content& children = SomeRecord(content, random).children;
        if (children.size() > 1) children.erase(children.begin() + SomeIndex(children, random));
    }
}

void ResizeStreams(Content& content, Xorshift& random) {
    for (std::uint32_t count = 1 + random.Below(4); count; --count) {
        Bytes& data = SomeStream(content, random).data;
        const auto size = static_cast<std::uint32_t>(data.size());
        switch (random.Below(3)) {
            case 0:
                data.resize(random.Below(size + 1));
                break;
            case 1:
                data.resize(size + 1 + random.Below(8000));
                break;
            default:
                data.clear();
        }
    }
}

void DamageBitmapHeaders(Content& content, Xorshift& random) {
    struct Field {
        std::size_t offset, width;
    };
    // Type, file size, place of the bits; header size, width, height, planes, depth,
    // compression, size of the bits, colours used and important.
    static constexpr Field kFields[] = {{0, 2},  {2, 4},  {10, 4}, {14, 4}, {18, 4}, {22, 4},
                                        {26, 2}, {28, 2}, {30, 4}, {34, 4}, {46, 4}, {50, 4}};
    for (std::uint32_t count = 1 + random.Below(6); count; --count) {
        Bytes& picture = SomeBitmap(content, random).data;
        for (std::uint32_t edits = 1 + random.Below(3); edits; --edits) {
            const Field& field = kFields[random.Below(std::size(kFields))];
            static constexpr std::uint32_t kDepths[] = {0, 1, 2, 4, 8, 16, 24, 32, 64};
            const bool depth = field.offset == 28 && random.Below(2);
            const std::uint32_t value = depth ? kDepths[random.Below(std::size(kDepths))] : Awkward(random);
            Put(picture, field.offset, value, field.width);
        }
    }
}

void ReplaceBitmaps(Content& content, Xorshift& random) {
    for (std::uint32_t count = 1 + random.Below(6); count; --count) {
        Bytes& picture = SomeBitmap(content, random).data;
        const std::size_t keep = random.Below(2) ? 54 : 0;
        Randomise(picture, keep, picture.size(), random);
    }
}

void DamageNames(Content& content, Xorshift& random) {
    for (std::uint32_t count = 1 + random.Below(12); count; --count) {
        const RecordPlace place = SomeRecordImage(content, random);
        const TSkinField& field = place.layout->fields[random.Below(place.layout->fieldCount)];
        if (field.kind != skinFieldBitmap || place.data->size() < field.offset + sizeof(TSkinName)) continue;
        std::byte* name = place.data->data() + field.offset;
        switch (random.Below(5)) {
            case 0:
                std::memset(name, 'x', sizeof(TSkinName));
                break;
            case 1:
                std::memset(name, 0xFF, sizeof(TSkinName));
                break;
            case 2:
                std::memset(name, 0, sizeof(TSkinName));
                break;
            case 3:
                std::memcpy(name, "Data", 5);
                break;
            default:
                Randomise(*place.data, field.offset, sizeof(TSkinName), random);
        }
    }
}

void DamageNumbers(Content& content, Xorshift& random) {
    for (std::uint32_t count = 1 + random.Below(30); count; --count) {
        const RecordPlace place = SomeRecordImage(content, random);
        const TSkinField& field = place.layout->fields[random.Below(place.layout->fieldCount)];
        const std::size_t offset = field.kind == skinFieldBitmap ? field.slotOffset : field.offset;
        const std::size_t part = field.kind == skinFieldRect ? 4 * random.Below(4) : 0;
        Put(*place.data, offset + part, Awkward(random), 4);
    }
}

struct Kind {
    const char* what;
    void (*file)(Bytes&, Xorshift&);
    void (*content)(Content&, Xorshift&);
};
constexpr Kind kKinds[] = {
    {"bytes flipped", FlipBytes, nullptr},
    {"bytes of the structure flipped", FlipBytesOfStructure, nullptr},
    {"file cut off", CutFile, nullptr},
    {"elements removed", nullptr, RemoveElements},
    {"streams resized", nullptr, ResizeStreams},
    {"bitmap headers damaged", nullptr, DamageBitmapHeaders},
    {"bitmaps replaced", nullptr, ReplaceBitmaps},
    {"names damaged", nullptr, DamageNames},
    {"numbers damaged", nullptr, DamageNumbers},
};

const Kind& KindOf(std::uint32_t seed) { return kKinds[seed % std::size(kKinds)]; }

}  // namespace

SkinMutations::SkinMutations(std::span<const std::byte> good) : m_good(good.begin(), good.end()) {
    CompoundContents contents;
    if (PlatformCompound(good).Reads(&contents)) m_content = AsTree(contents);
}

Bytes SkinMutations::Make(std::uint32_t seed) const {
    Xorshift random(seed);
    const Kind& kind = KindOf(seed);
    if (kind.file) {
        Bytes file = m_good;
        kind.file(file, random);
        return file;
    }
    Content content = m_content;
    kind.content(content, random);
    return AsFile(content);
}

std::string SkinMutations::Describe(std::uint32_t seed) {
    return "seed " + std::to_string(seed) + " (" + KindOf(seed).what + ")";
}

}  // namespace tavix_test
