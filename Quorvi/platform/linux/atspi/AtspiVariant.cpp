#include "Quorvi/platform/linux/atspi/AtspiVariant.h"

#include <glib.h>

namespace quorvi::atspi {
namespace {

Variant owned(GVariant* floating) {
    return Variant(g_variant_ref_sink(floating));
}

// The first value of a reply, taken out of the variant that property reads wrap it in.
Variant firstValue(const Variant& reply) {
    if (!reply || !g_variant_is_container(reply.get()) || g_variant_n_children(reply.get()) == 0)
        return nullptr;
    Variant value(g_variant_get_child_value(reply.get(), 0));
    while (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT))
        value.reset(g_variant_get_variant(value.get()));
    return value;
}

bool isOf(const Variant& value, const char* type) {
    return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE(type));
}

}  // namespace

Variant arguments() {
    return owned(g_variant_new("()"));
}
Variant arguments(std::int32_t a) {
    return owned(g_variant_new("(i)", a));
}
Variant arguments(std::int32_t a, std::int32_t b) {
    return owned(g_variant_new("(ii)", a, b));
}
Variant arguments(std::string_view a) {
    return owned(g_variant_new("(s)", std::string(a).c_str()));
}
Variant arguments(std::string_view a, std::string_view b) {
    return owned(g_variant_new("(ss)", std::string(a).c_str(), std::string(b).c_str()));
}

std::optional<std::string> readText(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "s")) return std::nullopt;
    gsize length = 0;
    const char* bytes = g_variant_get_string(value.get(), &length);
    return std::string(bytes, length);
}

std::optional<std::uint32_t> readUnsigned(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "u")) return std::nullopt;
    return g_variant_get_uint32(value.get());
}

std::optional<std::int32_t> readInteger(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "i")) return std::nullopt;
    return g_variant_get_int32(value.get());
}

std::optional<States> readStates(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "au")) return std::nullopt;
    gsize count = 0;
    const auto* words = static_cast<const guint32*>(
        g_variant_get_fixed_array(value.get(), &count, sizeof(guint32)));
    States states;
    if (count > 0) states.bits = words[0];
    if (count > 1) states.bits |= static_cast<std::uint64_t>(words[1]) << 32;
    return states;
}

std::optional<ObjectRef> readObject(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "(so)")) return std::nullopt;
    const char* bus = nullptr;
    const char* path = nullptr;
    g_variant_get(value.get(), "(&s&o)", &bus, &path);
    return ObjectRef{bus, path};
}

std::optional<std::vector<ObjectRef>> readObjects(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "a(so)")) return std::nullopt;
    std::vector<ObjectRef> objects;
    objects.reserve(g_variant_n_children(value.get()));
    GVariantIter iterator;
    g_variant_iter_init(&iterator, value.get());
    const char* bus = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_next(&iterator, "(&s&o)", &bus, &path)) objects.push_back({bus, path});
    return objects;
}

std::optional<std::vector<std::string>> readTexts(const Variant& reply) {
    const auto value = firstValue(reply);
    if (!isOf(value, "as")) return std::nullopt;
    std::vector<std::string> texts;
    GVariantIter iterator;
    g_variant_iter_init(&iterator, value.get());
    const char* text = nullptr;
    while (g_variant_iter_next(&iterator, "&s", &text)) texts.emplace_back(text);
    return texts;
}

std::optional<Span> readSpan(const Variant& reply) {
    if (!isOf(reply, "(ii)")) return std::nullopt;
    Span span;
    g_variant_get(reply.get(), "(ii)", &span.start, &span.end);
    return span;
}

}  // namespace quorvi::atspi
