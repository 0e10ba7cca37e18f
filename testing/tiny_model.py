#!/usr/bin/env python3
"""Writes a tiny language model whose answers are known, to try a genuine model server with (no test needs it).

    testing/tiny_model.py FILE.gguf
    llama-server --model FILE.gguf --port 8080 --jinja

Every token is followed by one other token, always. How an answer begins depends on the prompt's words:

    … "forever" …     words without an end, until the limit of tokens
    … "count" …       the numbers from 1 to 200
    … anything else   <think>one two three</think>The letter was received on Monday, thank you.
                      without the thinking where the request says {"chat_template_kwargs": {"enable_thinking": false}}
"""
import struct
import sys

THINKING = ["<think>", "one", " two", " three", "</think>"]
ANSWER = ["The", " letter", " was", " received", " on", " Monday", ",", " thank", " you", "."]
ENDLESS = [" again", " and"]
NUMBERS = ["1"] + [f" {number}" for number in range(2, 201)]
BEGIN_THINKING, BEGIN_ANSWER, BEGIN_ENDLESS, BEGIN_NUMBERS = (
    f"<|begin {kind}|>" for kind in ("thinking", "answer", "endless", "numbers"))
UNKNOWN, START, END = "<unk>", "<s>", "</s>"

TEMPLATE = (
    "{{ messages[-1].content }}"
    "{% if 'forever' in messages[-1].content %}" + BEGIN_ENDLESS + "{% elif 'count' in messages[-1].content %}"
    + BEGIN_NUMBERS + "{% elif enable_thinking is defined and not enable_thinking %}" + BEGIN_ANSWER + "{% else %}"
    + BEGIN_THINKING + "{% endif %}"
)

# Kinds of tokens and of values, by the GGUF specification.
NORMAL, UNKNOWN_TOKEN, CONTROL, BYTE = 1, 2, 3, 6
U32, I32, F32, STRING, ARRAY = 4, 5, 6, 8, 9
ALIGNMENT = 32


def vocabulary():
    words = THINKING + ANSWER + ENDLESS + NUMBERS
    tokens = [(UNKNOWN, UNKNOWN_TOKEN), (START, CONTROL), (END, CONTROL)]
    tokens += [(f"<0x{byte:02X}>", BYTE) for byte in range(256)]
    tokens += [(word.replace(" ", "\u2581"), NORMAL) for word in words]
    tokens += [(word, CONTROL) for word in (BEGIN_THINKING, BEGIN_ANSWER, BEGIN_ENDLESS, BEGIN_NUMBERS)]
    while len(tokens) % ALIGNMENT:
        tokens.append((f"<|unused {len(tokens)}|>", CONTROL))
    return tokens


def followers(tokens):
    number = {text: at for at, (text, _) in enumerate(tokens)}
    chains = [
        [BEGIN_THINKING] + THINKING + ANSWER + [END],
        [BEGIN_ANSWER] + ANSWER + [END],
        [BEGIN_ENDLESS] + ENDLESS + ENDLESS[:1],
        [BEGIN_NUMBERS] + NUMBERS + [END],
    ]
    pairs = {}
    for chain in chains:
        ids = [number[word.replace(" ", "\u2581") if word not in number else word] for word in chain]
        pairs.update(zip(ids, ids[1:]))
    return pairs


def text(value):
    data = value.encode()
    return struct.pack("<Q", len(data)) + data


def entry(key, kind, value):
    return text(key) + struct.pack("<I", kind) + value


def array(kind, packed, count):
    return struct.pack("<IQ", kind, count) + packed


def metadata(tokens, width):
    u32 = lambda value: struct.pack("<I", value)
    count = len(tokens)
    return [
        entry("general.architecture", STRING, text("llama")),
        entry("general.name", STRING, text("tiny")),
        entry("llama.context_length", U32, u32(4096)),
        entry("llama.embedding_length", U32, u32(width)),
        entry("llama.block_count", U32, u32(1)),
        entry("llama.feed_forward_length", U32, u32(32)),
        entry("llama.attention.head_count", U32, u32(1)),
        entry("llama.attention.head_count_kv", U32, u32(1)),
        entry("llama.attention.layer_norm_rms_epsilon", F32, struct.pack("<f", 1e-5)),
        entry("llama.rope.dimension_count", U32, u32(width)),
        entry("tokenizer.ggml.model", STRING, text("llama")),
        entry("tokenizer.ggml.tokens", ARRAY, array(STRING, b"".join(text(t) for t, _ in tokens), count)),
        entry("tokenizer.ggml.scores", ARRAY, array(F32, struct.pack(f"<{count}f", *[0.0] * count), count)),
        entry("tokenizer.ggml.token_type", ARRAY, array(I32, struct.pack(f"<{count}i", *[k for _, k in tokens]), count)),
        entry("tokenizer.ggml.bos_token_id", U32, u32(1)),
        entry("tokenizer.ggml.eos_token_id", U32, u32(2)),
        entry("tokenizer.ggml.unknown_token_id", U32, u32(0)),
        entry("tokenizer.chat_template", STRING, text(TEMPLATE)),
    ]


def matrix(columns, rows, ones):
    """Zeros, and what `ones` maps a (row, column) to."""
    values = [0.0] * (columns * rows)
    for (row, column), value in ones.items():
        values[row * columns + column] = value
    return (columns, rows), values


def tensors(tokens, width):
    count = len(tokens)
    norm = ((width,), [1.0] * width)
    zeros = lambda columns, rows: matrix(columns, rows, {})
    # A token's vector has one 1, at its own number, and nothing in between changes it: so the output's row of the token
    # that follows has its weight in that column.
    return {
        "token_embd.weight": matrix(width, count, {(token, token): 1.0 for token in range(count)}),
        "output_norm.weight": norm,
        "output.weight": matrix(width, count, {(after, token): 10.0 for token, after in followers(tokens).items()}),
        "blk.0.attn_norm.weight": norm,
        "blk.0.attn_q.weight": zeros(width, width),
        "blk.0.attn_k.weight": zeros(width, width),
        "blk.0.attn_v.weight": zeros(width, width),
        "blk.0.attn_output.weight": zeros(width, width),
        "blk.0.ffn_norm.weight": norm,
        "blk.0.ffn_gate.weight": zeros(width, 32),
        "blk.0.ffn_up.weight": zeros(width, 32),
        "blk.0.ffn_down.weight": zeros(32, width),
    }


def padded(data):
    return data + b"\0" * (-len(data) % ALIGNMENT)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    tokens = vocabulary()
    width = len(tokens)
    entries = metadata(tokens, width)
    infos, blobs, offset = b"", b"", 0
    named = tensors(tokens, width)
    for name, (shape, values) in named.items():
        infos += text(name) + struct.pack("<I", len(shape)) + struct.pack(f"<{len(shape)}Q", *shape)
        infos += struct.pack("<IQ", 0, offset)  # 32-bit floating-point numbers
        blob = padded(struct.pack(f"<{len(values)}f", *values))
        blobs += blob
        offset += len(blob)
    header = b"GGUF" + struct.pack("<IQQ", 3, len(named), len(entries)) + b"".join(entries) + infos
    with open(sys.argv[1], "wb") as file:
        file.write(padded(header) + blobs)


main()
