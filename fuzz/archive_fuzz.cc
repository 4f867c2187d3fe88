/// @file
/// Loading archives from any bytes: a value or an exception, nothing half-loaded, no allocation larger than
/// the archive could hold. What was loaded is stored and loaded again and must be the same.

#include <algorithm>
#include <atomic>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "nkdt/NkDt.h"
#include "nkfw/Memory.h"

namespace {

using fuzz::require;

/// The largest request for memory while this lives.
class LargestRequest {
  public:
    LargestRequest() : m_before(nkfw::setAllocationProbe(&see)) { s_largest = 0; }
    ~LargestRequest() { nkfw::setAllocationProbe(m_before); }
    LargestRequest(const LargestRequest&) = delete;
    LargestRequest& operator=(const LargestRequest&) = delete;
    std::size_t value() const { return s_largest; }

  private:
    static bool see(std::size_t bytes) noexcept {
        s_largest = std::max(s_largest.load(), bytes);
        return true;
    }
    static inline std::atomic<std::size_t> s_largest{0};
    nkfw::AllocationProbe m_before;
};

template <class Body>
std::string stored(Body body) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    body(archive);
    archive.Close();
    return {reinterpret_cast<const char*>(file.GetData()), static_cast<std::size_t>(file.GetLength())};
}

/// Lets the body read from an archive of these bytes; FALSE if the archive refuses.
template <class Body>
bool load(std::string_view bytes, Body body) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try {
        body(archive);
    } catch (CArchiveException* refusal) {
        require(refusal->m_cause != CArchiveException::none, "a refusal has a cause");
        refusal->Delete();
        try {
            BYTE next = 0;
            archive >> next;
        } catch (CArchiveException* second) {
            second->Delete();
            return false;
        }
        fuzz::fail("an archive that refused refuses everything afterwards");
    }
    return true;
}

// Values

/// Every object can be serialised, only not every class says so in public.
void serialize(CObject& object, CArchive& archive) {
    object.Serialize(archive);
}

/// A value as its archive shows it: the word of its definedness, then the number or text.
std::string archived(const NkDtBasis& value) {
    const std::unique_ptr<NkDtBasis> copy(value.NewObject());
    return stored([&](CArchive& archive) { serialize(*copy, archive); });
}

void checkReload(const NkDtBasis& value) {
    const std::string bytes = archived(value);
    const std::unique_ptr<NkDtBasis> again(value.NewObject());
    again->Clear();
    require(load(bytes, [&](CArchive& archive) { serialize(*again, archive); }),
            "what was stored can be loaded");
    require(archived(*again) == bytes && again->IsDefined() == value.IsDefined(),
            "what was loaded is what was stored");
}

/// Loads values of the three classes in turn, as long as the archive gives any.
void checkValues(std::string_view bytes) {
    NkDtLong number(7);
    NkDtShort shortNumber(8);
    NkDtString text("neun");
    NkDtBasis* const values[] = {&number, &shortNumber, &text};
    const LargestRequest requests;
    load(bytes, [&](CArchive& archive) {
        for (std::size_t i = 0;; ++i) {
            NkDtBasis& value = *values[i % std::size(values)];
            value.SetModified(FALSE);
            const std::string before = archived(value);
            try {
                serialize(value, archive);
            } catch (...) {
                require(archived(value) == before && !value.IsModified(),
                        "a load that fails changes nothing");
                throw;
            }
            require((value.IsModified() != FALSE) == (archived(value) != before),
                    "a load sets the modified flag for a change alone");
        }
    });
    require(requests.value() <= 2 * bytes.size() + 4096,
            "no allocation is larger than what an archive could hold");
    for (const NkDtBasis* value : values)
        checkReload(*value);
}

// Object graphs

/// A node with a value and two others, which it knows and does not own: a damaged archive may join nodes in
/// any way.
class Node : public CObject {
  public:
    Node() { s_living.insert(this); }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node() override { s_living.erase(this); }
    /// Nodes whose reading fails are released by the archive, all others here.
    static void releaseAll() {
        while (!s_living.empty())
            delete *s_living.begin();
    }
    static std::size_t count() { return s_living.size(); }

    static const CRuntimeClass* GetThisClass() noexcept;
    static CObject* CreateObject() { return new Node; }
    const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

    void Serialize(CArchive& archive) override {
        m_name.Serialize(archive);
        for (Node*& other : m_others) {
            if (archive.IsStoring()) {
                archive << other;
            } else {
                other = static_cast<Node*>(archive.ReadObject(GetThisClass()));
            }
        }
    }

    NkDtString m_name;
    Node* m_others[2] = {};

  private:
    static inline std::set<Node*> s_living;
};

constexpr CRuntimeClass classNode{"Node", sizeof(Node), 1, &Node::CreateObject, &CObject::GetThisClass};
const CClassRegistration registrationNode{classNode};

const CRuntimeClass* Node::GetThisClass() noexcept {
    return &classNode;
}

/// The nodes that can be reached, each with its number in the order of reading.
using Numbers = std::map<const Node*, std::size_t>;

/// One line for each node: its name and the numbers of its others. Equal graphs have equal descriptions.
std::string describe(const Node* root) {
    std::vector<const Node*> order;
    Numbers numbers;
    const auto numberOf = [&](const Node* node) -> std::string {
        if (node == nullptr) return "-";
        const auto [place, isNew] = numbers.emplace(node, order.size());
        if (isNew) order.push_back(node);
        return std::to_string(place->second);
    };
    std::string result = numberOf(root) + '\n';
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Node& node = *order[i];
        result += archived(node.m_name);
        for (const Node* other : node.m_others)
            result += ' ' + numberOf(other);
        result += '\n';
    }
    return result;
}

void checkGraph(std::string_view bytes) {
    const LargestRequest requests;
    CObject* object = nullptr;
    const bool loaded = load(bytes, [&](CArchive& archive) { object = archive.ReadObject(nullptr); });
    require(requests.value() <= 2 * bytes.size() + 4096,
            "no allocation is larger than what an archive could hold");
    require(Node::count() <= bytes.size(), "no more objects than an archive could hold");
    if (!loaded || object == nullptr) return;

    if (object->IsKindOf(RUNTIME_CLASS(NkDtBasis))) {
        const std::unique_ptr<NkDtBasis> value(static_cast<NkDtBasis*>(object));
        checkReload(*value);
        return;
    }
    if (!object->IsKindOf(RUNTIME_CLASS(Node))) {
        delete object;
        return;
    }
    const std::string before = describe(static_cast<Node*>(object));
    const std::string again = stored([&](CArchive& archive) { archive << object; });
    require(load(again, [&](CArchive& archive) { archive >> object; }),
            "a graph that was stored can be loaded");
    require(describe(static_cast<Node*>(object)) == before, "a graph comes back with its values and joints");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    if (input.choice(2) == 0) {
        checkValues(input.bytes());
    } else {
        checkGraph(input.bytes());
        Node::releaseAll();
    }
    return 0;
}
