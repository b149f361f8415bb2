#include "cutout/TinyModel.h"

namespace quillary::test {

namespace {

/// A message in the wire format of protocol buffers.
class Message {
public:
    Message& number(int field, quint64 value) {
        varint(static_cast<quint64>(field) << 3);
        varint(value);
        return *this;
    }
    Message& bytes(int field, const QByteArray& value) {
        varint(static_cast<quint64>(field) << 3 | 2);
        varint(static_cast<quint64>(value.size()));
        m_data += value;
        return *this;
    }
    Message& message(int field, const Message& value) { return bytes(field, value.m_data); }
    const QByteArray& data() const { return m_data; }

private:
    void varint(quint64 value) {
        for (; value > 127; value >>= 7) m_data += static_cast<char>(value | 128);
        m_data += static_cast<char>(value);
    }

    QByteArray m_data;
};

constexpr int floats = 1;
constexpr int integers = 7;

Message valueInfo(const char* name, quint64 channels) {
    Message shape;
    for (const quint64 size : {quint64(1), channels, quint64(320), quint64(320)})
        shape.message(1, Message().number(1, size));
    const Message tensor = Message().number(1, floats).message(2, shape);
    return Message().bytes(1, name).message(2, Message().message(1, tensor));
}

} // namespace

QByteArray tinyModel(float red, float green) {
    const float factors[] = {red, green, 0};
    Message weights;
    for (const quint64 size : {1, 3, 1, 1}) weights.number(1, size);
    weights.number(2, floats).bytes(8, "weights");
    weights.bytes(9, QByteArray(reinterpret_cast<const char*>(factors), sizeof factors));
    const Message kernel = Message().bytes(1, "kernel_shape").number(8, 1).number(8, 1).number(20, integers);
    const Message node = Message()
                             .bytes(1, "picture")
                             .bytes(1, "weights")
                             .bytes(2, "mask")
                             .bytes(3, "convolution")
                             .bytes(4, "Conv")
                             .message(5, kernel);
    const Message graph = Message()
                              .message(1, node)
                              .bytes(2, "tiny")
                              .message(5, weights)
                              .message(11, valueInfo("picture", 3))
                              .message(12, valueInfo("mask", 1));
    return Message().number(1, 7).message(7, graph).message(8, Message().bytes(1, "").number(2, 11)).data();
}

} // namespace quillary::test
