#include "flutter/standard_codec.h"

#include "flutter/standard_reader.h"
#include "flutter/standard_writer.h"

namespace flutter {
namespace {

constexpr std::uint8_t successByte = 0;
constexpr std::uint8_t errorByte = 1;

std::optional<std::string> asText(std::optional<EncodableValue> value) {
    const auto* text = value ? value->getIf<std::string>() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<Envelope> errorFrom(StandardReader& reader) {
    auto code = asText(reader.value());
    const auto message = code ? reader.value() : std::nullopt;
    auto details = message ? reader.value() : std::nullopt;
    if (!details || !reader.atEnd()) return std::nullopt;
    auto text = asText(message);
    if (!text && !message->isNull()) return std::nullopt;
    return FlutterError{std::move(*code), std::move(text), std::move(*details)};
}

} // namespace

std::vector<std::uint8_t> encodeMessage(const EncodableValue& value) {
    StandardWriter writer;
    writer.value(value);
    return writer.take();
}

std::optional<EncodableValue> decodeMessage(std::span<const std::uint8_t> message) {
    StandardReader reader(message);
    auto value = reader.value();
    return reader.atEnd() ? std::move(value) : std::nullopt;
}

std::vector<std::uint8_t> encodeMethodCall(const MethodCall& call) {
    StandardWriter writer;
    writer.string(call.method);
    writer.value(call.arguments);
    return writer.take();
}

std::optional<MethodCall> decodeMethodCall(std::span<const std::uint8_t> message) {
    StandardReader reader(message);
    auto method = asText(reader.value());
    auto arguments = method ? reader.value() : std::nullopt;
    if (!arguments || !reader.atEnd()) return std::nullopt;
    return MethodCall{std::move(*method), std::move(*arguments)};
}

std::vector<std::uint8_t> encodeSuccessEnvelope(const EncodableValue& value) {
    StandardWriter writer;
    writer.byte(successByte);
    writer.value(value);
    return writer.take();
}

std::vector<std::uint8_t> encodeErrorEnvelope(std::string_view code,
                                              const std::optional<std::string>& message,
                                              const EncodableValue& details) {
    StandardWriter writer;
    writer.byte(errorByte);
    writer.string(code);
    writer.value(message ? EncodableValue(*message) : EncodableValue());
    writer.value(details);
    return writer.take();
}

std::optional<Envelope> decodeEnvelope(std::span<const std::uint8_t> message) {
    StandardReader reader(message);
    const auto outcome = reader.byte();
    if (outcome == errorByte) return errorFrom(reader);
    auto value = outcome == successByte ? reader.value() : std::nullopt;
    if (!value || !reader.atEnd()) return std::nullopt;
    return std::move(*value);
}

} // namespace flutter
