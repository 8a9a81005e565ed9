#!/usr/bin/env python3
"""Checks that nothing of this library's own C++ library crosses to the client.

The client is built with another compiler and library. Over the headers of a
folder (ClientData/ by default) this finds every virtual slot and every record
structure that a slot hands out or takes (recursively, through the records'
own members), and fails when one of them:
  - names a type of the standard library (std::...), or
  - returns a class by value, which the two compilers pass differently
    (a slot builds such a result in caller's storage instead).

Usage: check-boundary.py [FOLDER]     check the headers of FOLDER
       check-boundary.py --self-test   prove that the checks catch faults
"""
import os
import re
import sys
import tempfile

SCALARS = {
    "void", "bool", "char", "int", "unsigned", "unsigned int", "long", "unsigned long", "short",
    "unsigned short", "float", "double", "int8_t", "uint8_t", "int16_t", "uint16_t", "int32_t",
    "uint32_t", "int64_t", "uint64_t", "size_t", "std::size_t", "VersionQueryFn",
}
VIRTUAL = re.compile(r"\bvirtual\s+([^;{}()]*?)\b(\w+)\s*\(([^()]*)\)")
RECORD = re.compile(r"\bstruct\s+(\w+)\s*(?::[^{;]*)?\{")
IDENTIFIER = re.compile(r"[A-Za-z_]\w*")


def strip_comments(text):
    text = re.sub(r"/\*.*?\*/", " ", text, flags=re.S)
    return re.sub(r"//[^\n]*", "", text)


def body_at(text, start):
    """The text between the brace at start and its match."""
    depth = 0
    for i in range(start, len(text)):
        if text[i] == "{":
            depth += 1
        elif text[i] == "}":
            depth -= 1
            if depth == 0:
                return text[start + 1:i]
    return text[start + 1:]


def read_headers(folder):
    sources = {}
    for name in sorted(os.listdir(folder)):
        if name.endswith(".h"):
            with open(os.path.join(folder, name), encoding="latin-1") as f:
                sources[name] = strip_comments(f.read())
    return sources


def find_faults(folder):
    sources = read_headers(folder)
    records = {}
    for name, text in sources.items():
        for match in RECORD.finditer(text):
            records.setdefault(match.group(1), (name, body_at(text, match.end() - 1)))

    faults = []
    reached = []
    for name, text in sources.items():
        for match in VIRTUAL.finditer(text):
            result, slot, params = match.group(1).strip(), match.group(2), match.group(3)
            where = f"{name}: {slot}"
            for part in (result, params):
                if "std::" in part:
                    faults.append(f"{where}: a standard-library type at the boundary: {part.strip()}")
            bare = re.sub(r"\bconst\b", "", result).strip()
            if "*" not in bare and "&" not in bare and " ".join(bare.split()) not in SCALARS:
                faults.append(f"{where}: returns {bare} by value")
            reached += [(where, word) for word in IDENTIFIER.findall(result + " " + params)]

    seen = set()
    while reached:
        where, word = reached.pop()
        if word not in records or word in seen:
            continue
        seen.add(word)
        header, body = records[word]
        for std_type in sorted(set(re.findall(r"std::\w+", body))):
            faults.append(f"{header}: record {word} (reached from {where}) holds {std_type}")
        reached += [(f"{where} > {word}", member) for member in IDENTIFIER.findall(body)]
    return faults, len(seen)


def self_test():
    bad = """
        struct Inner { std::string strName; };
        struct Outer { int nId; Inner inner; };
        class ITable {
        public:
            virtual const Outer* Find(int nId) = 0;
            virtual std::vector<int>* List() = 0;
            virtual CZelString Name() = 0;
            virtual void Fill(std::string* pOut) = 0;
        };
    """
    good = """
        struct Plain { int nId; char szName[16]; };
        class ITable {
        public:
            virtual const Plain* Find(unsigned int nId) = 0;
            virtual CClientString* Name(CClientString* pResult) = 0;
            virtual uint32_t Colour() = 0;
        };
    """
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "Bad.h"), "w") as f:
            f.write(bad)
        faults, _ = find_faults(folder)
        expected = ["holds std::string", "std::vector", "returns CZelString by value", "std::string* pOut"]
        missed = [e for e in expected if not any(e in fault for fault in faults)]
        os.remove(os.path.join(folder, "Bad.h"))
        with open(os.path.join(folder, "Good.h"), "w") as f:
            f.write(good)
        clean, _ = find_faults(folder)
    if missed or clean:
        print("self-test failed; missed:", missed, "false alarms:", clean)
        return 1
    print("self-test passed: 4 faults found in the bad header, none in the good one")
    return 0


def main(argv):
    if len(argv) > 1 and argv[1] == "--self-test":
        return self_test()
    folder = argv[1] if len(argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "ClientData")
    faults, nRecords = find_faults(folder)
    for fault in faults:
        print(fault)
    if faults:
        print(f"{len(faults)} boundary faults")
        return 1
    print(f"boundary clean: every slot and the {nRecords} records they reach")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
