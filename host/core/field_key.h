#pragma once

#include <cstdint>
#include <type_traits>

#ifdef _MSC_VER
#define TARN_FIELD_KEY_NAME __FUNCSIG__
#else
#define TARN_FIELD_KEY_NAME __PRETTY_FUNCTION__
#endif

namespace tarn {

/// Which attribute is meant, told by the member that holds it, so that a misspelled one does not compile: see key<>.
/// A default one means none.
class FieldKey {
public:
    constexpr FieldKey() = default;
    constexpr bool operator==(const FieldKey& other) const { return m_id == other.m_id; }
    /// Names the member, among other things: for messages to whoever misused the key.
    constexpr const char* text() const { return m_text; }
    constexpr explicit operator bool() const { return m_id != 0; }

    template <auto member>
    static constexpr FieldKey of()
    {
        using Member = std::remove_const_t<decltype(member)>;
        if constexpr (std::is_class_v<Member>)
            return of_type<Member>();
        else
            return from_name(TARN_FIELD_KEY_NAME);
    }

private:
    /// Of an access class the type counts: how its value is spelled hangs on the aliases that were met.
    template <class Access>
    static constexpr FieldKey of_type()
    {
        return from_name(TARN_FIELD_KEY_NAME);
    }
    // The full name counts, not an address: libraries that are loaded apart have addresses of their own.
    static constexpr FieldKey from_name(const char* name)
    {
        FieldKey key;
        key.m_text = name;
        key.m_id = 0xcbf29ce484222325u; // FNV-1a
        for (; *name; ++name)
            key.m_id = (key.m_id ^ static_cast<std::uint8_t>(*name)) * 0x100000001b3u;
        return key;
    }

    std::uint64_t m_id = 0;
    const char* m_text = "";
};

/// `key<&ControlState::x>`, the same for all derived states; `key<&ControlExtras::rotation>` for rare data;
/// `key<ScaleModeAccess{}>` for an attribute that an access class works out.
template <auto member>
inline constexpr FieldKey key = FieldKey::of<member>();

#undef TARN_FIELD_KEY_NAME

} // namespace tarn
