#include "flutter/standard_codec.h"

#include "flutter/byte_sink.h"
#include "flutter/standard_reader.h"
#include "flutter/standard_writer.h"

#include <utility>

namespace flutter {
namespace {

constexpr std::uint8_t successByte = 0;
constexpr std::uint8_t errorByte = 1;

// What `write` writes, in the memory of `buffer` if that is large enough. The same code runs twice: it first
// counts the bytes, so that they need one allocation, and then writes them. False when a text was not UTF-8.
template <BrokenText broken, class Write>
bool encode(const Write& write, std::vector<std::uint8_t>& buffer) {
    const std::size_t size = write(StandardWriter<ByteCounter, broken>(), ByteCounter()).count;
    if (buffer.capacity() < size) buffer.clear(); // or its contents would be moved to the new memory
    buffer.resize(size);
    return write(StandardWriter<ByteSink, broken>(), ByteSink{buffer.data()}).allUtf8;
}

template <class Write>
std::vector<std::uint8_t> encoded(const Write& write, std::vector<std::uint8_t> buffer) {
    if (!encode<BrokenText::kept>(write, buffer)) encode<BrokenText::repaired>(write, buffer);
    return buffer;
}

std::optional<Envelope> decodedError(StandardReader& reader) {
    FlutterError error;
    EncodableValue message;
    const bool whole = reader.string(error.code) && reader.value(message) && reader.value(error.details);
    if (!whole || !reader.atEnd()) return std::nullopt;
    if (const auto* text = message.getIf<std::string>()) {
        error.message = *text;
    } else if (!message.isNull()) {
        return std::nullopt;
    }
    return error;
}

} // namespace

std::vector<std::uint8_t> encodeMessage(const EncodableValue& value, std::vector<std::uint8_t> buffer) {
    return encoded([&](auto writer, auto sink) { return writer.value(sink, value); }, std::move(buffer));
}

std::optional<EncodableValue> decodeMessage(std::span<const std::uint8_t> message) {
    StandardReader reader(message);
    std::optional<EncodableValue> value(std::in_place);
    if (!reader.value(*value) || !reader.atEnd()) return std::nullopt;
    return value;
}

std::vector<std::uint8_t> encodeMethodCall(const MethodCall& call, std::vector<std::uint8_t> buffer) {
    const auto write = [&](auto writer, auto sink) {
        return writer.value(writer.string(sink, call.method), call.arguments);
    };
    return encoded(write, std::move(buffer));
}

std::optional<MethodCall> decodeMethodCall(std::span<const std::uint8_t> message) {
    StandardReader reader(message);
    std::optional<MethodCall> call(std::in_place);
    if (!reader.string(call->method) || !reader.value(call->arguments) || !reader.atEnd())
        return std::nullopt;
    return call;
}

std::vector<std::uint8_t> encodeSuccessEnvelope(const EncodableValue& value,
                                                std::vector<std::uint8_t> buffer) {
    const auto write = [&](auto writer, auto sink) {
        sink.byte(successByte);
        return writer.value(sink, value);
    };
    return encoded(write, std::move(buffer));
}

std::vector<std::uint8_t> encodeErrorEnvelope(std::string_view code,
                                              const std::optional<std::string>& message,
                                              const EncodableValue& details,
                                              std::vector<std::uint8_t> buffer) {
    const auto write = [&](auto writer, auto sink) {
        sink.byte(errorByte);
        sink = writer.string(sink, code);
        sink = writer.value(sink, message ? EncodableValue(*message) : EncodableValue());
        return writer.value(sink, details);
    };
    return encoded(write, std::move(buffer));
}

std::optional<Envelope> decodeEnvelope(std::span<const std::uint8_t> message) {
    StandardReader reader(message);
    const auto outcome = reader.byte();
    if (outcome == errorByte) return decodedError(reader);
    std::optional<Envelope> envelope(std::in_place);
    const bool whole = outcome == successByte && reader.value(std::get<EncodableValue>(*envelope));
    if (!whole || !reader.atEnd()) return std::nullopt;
    return envelope;
}

} // namespace flutter
