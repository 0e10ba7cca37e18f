#!/usr/bin/env python3
"""Writes a language model of 11 MB for llama-server, to try the host with a genuine server; no test needs it.

    testing/tiny_model/make_tiny_model.py tiny.gguf
    llama-server -m tiny.gguf --port 8080

What it answers depends on the last character of the last message alone: "?" makes it count without an end, everything
else makes it count to 200 and stop. The next token depends on the one before it only: one layer that adds nothing, and
an output matrix that holds which token follows which.

The file's format is GGUF, version 3 (ggml's docs/gguf.md), with the tensors and keys of the architecture "llama".
"""
import struct
import sys
from array import array

COUNT = 200
SPECIAL = ["<unk>", "<s>", "</s>"]
UNKNOWN, BEGIN, END = range(3)
BYTES = len(SPECIAL)               # where the 256 tokens of single bytes begin
FINITE = BYTES + 256               # "▁1" to "▁200", the end after them
ENDLESS = FINITE + COUNT           # the same once more, the first after the last
TOKENS = ENDLESS + COUNT
WIDTH = -(-TOKENS // 32) * 32      # numbers a token: one for each that it can be
HEADS, FORWARD = WIDTH // 32, 32
KINDS = {"normal": 1, "unknown": 2, "control": 3, "byte": 6}
UINT32, INT32, FLOAT32, BOOL, STRING, ARRAY = 4, 5, 6, 7, 8, 9


def following():
    """Which token follows which: {token: next}."""
    after = {BYTES + byte: FINITE for byte in range(256)}
    after[BYTES + ord("?")] = ENDLESS
    for first, last in ((FINITE, END), (ENDLESS, ENDLESS)):
        after |= {first + i: first + i + 1 for i in range(COUNT - 1)}
        after[first + COUNT - 1] = last
    return after


def string(text):
    return struct.pack("<Q", len(text.encode())) + text.encode()


def packed(kind, value):
    return string(value) if kind == STRING else struct.pack({UINT32: "<I", INT32: "<i", FLOAT32: "<f", BOOL: "<?"}[kind], value)


def pair(key, kind, value):
    if isinstance(value, list):
        elements = b"".join(packed(kind, one) for one in value)
        return string(key) + struct.pack("<IIQ", ARRAY, kind, len(value)) + elements
    return string(key) + struct.pack("<I", kind) + packed(kind, value)


def metadata():
    numbers = [f"▁{i + 1}" for i in range(COUNT)]
    # Two tokens of one text are not allowed: the endless ones have a space of their own behind them.
    tokens = SPECIAL + [f"<0x{byte:02X}>" for byte in range(256)] + numbers + [one + "▁" for one in numbers]
    kinds = ["unknown", "control", "control"] + ["byte"] * 256 + ["normal"] * 2 * COUNT
    llama = {"context_length": 32768, "embedding_length": WIDTH, "block_count": 1, "feed_forward_length": FORWARD,
             "attention.head_count": HEADS, "vocab_size": TOKENS, "rope.dimension_count": WIDTH // HEADS}
    return [pair("general.architecture", STRING, "llama"), pair("general.name", STRING, "tiny"),
            *(pair("llama." + key, UINT32, value) for key, value in llama.items()),
            pair("llama.attention.layer_norm_rms_epsilon", FLOAT32, 1e-5),
            pair("tokenizer.ggml.model", STRING, "llama"),
            pair("tokenizer.ggml.tokens", STRING, tokens),
            pair("tokenizer.ggml.scores", FLOAT32, [0.0] * TOKENS),
            pair("tokenizer.ggml.token_type", INT32, [KINDS[kind] for kind in kinds]),
            pair("tokenizer.ggml.unknown_token_id", UINT32, UNKNOWN),
            pair("tokenizer.ggml.bos_token_id", UINT32, BEGIN), pair("tokenizer.ggml.eos_token_id", UINT32, END),
            pair("tokenizer.ggml.add_space_prefix", BOOL, False),
            pair("tokenizer.chat_template", STRING, "{% for message in messages %}{{ message['content'] }}{% endfor %}")]


def matrix(rows, columns, ones=()):
    """Zeros, but for the places (row, column) of `ones`."""
    numbers = array("f", bytes(4 * rows * columns))
    for row, column in ones:
        numbers[row * columns + column] = 1.0
    return [columns, rows], numbers


def tensors():
    whole = ([WIDTH], array("f", [1.0] * WIDTH))
    layer = "blk.0."
    return {"token_embd.weight": matrix(TOKENS, WIDTH, ((token, token) for token in range(TOKENS))),
            "output.weight": matrix(TOKENS, WIDTH, ((after, token) for token, after in following().items())),
            "output_norm.weight": whole, layer + "attn_norm.weight": whole, layer + "ffn_norm.weight": whole,
            **{f"{layer}attn_{name}.weight": matrix(WIDTH, WIDTH) for name in ("q", "k", "v", "output")},
            **{f"{layer}ffn_{name}.weight": matrix(FORWARD, WIDTH) for name in ("gate", "up")},
            layer + "ffn_down.weight": matrix(WIDTH, FORWARD)}


def aligned(size):
    return -(-size // 32) * 32


def main(path):
    pairs, parts = metadata(), tensors()
    head = b"GGUF" + struct.pack("<IQQ", 3, len(parts), len(pairs)) + b"".join(pairs)
    offset = 0
    for name, (shape, numbers) in parts.items():
        head += string(name) + struct.pack(f"<I{len(shape)}QIQ", len(shape), *shape, 0, offset)
        offset += aligned(4 * len(numbers))
    with open(path, "wb") as file:
        file.write(head.ljust(aligned(len(head)), b"\0"))
        for _, numbers in parts.values():
            file.write(numbers.tobytes().ljust(aligned(4 * len(numbers)), b"\0"))


if len(sys.argv) != 2:
    sys.exit(__doc__)
main(sys.argv[1])
