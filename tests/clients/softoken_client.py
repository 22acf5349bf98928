"""This client uses NSS's software token through the library of its first argument. It gives the token the directory of
its database, which is its second argument."""

import ctypes
import sys
from ctypes import POINTER, byref, c_char_p, c_ubyte, c_ulong, c_void_p, cast

CKO_SECRET_KEY, CKK_GENERIC_SECRET = 4, 0x10
CKA_CLASS, CKA_SIGN, CKA_VALUE, CKA_KEY_TYPE = 0, 0x108, 0x11, 0x100
CKM_SHA256, CKM_SHA256_HMAC = 0x250, 0x251
CKF_SERIAL_SESSION = 4

# The functions have these places in the list, behind the version.
FUNCTIONS = {
    "C_Initialize": 0, "C_Finalize": 1, "C_GetSlotList": 4, "C_OpenSession": 12, "C_CloseSession": 13,
    "C_CreateObject": 20, "C_DigestInit": 37, "C_Digest": 38, "C_SignInit": 42, "C_Sign": 43,
}  # fmt: skip


class InitializeArguments(ctypes.Structure):
    _fields_ = [
        ("mutex_functions", c_void_p * 4), ("flags", c_ulong), ("library_parameters", c_char_p), ("reserved", c_void_p),
    ]  # fmt: skip


class Mechanism(ctypes.Structure):
    _fields_ = [("type", c_ulong), ("parameter", c_void_p), ("size", c_ulong)]


class Attribute(ctypes.Structure):
    _fields_ = [("type", c_ulong), ("value", c_void_p), ("size", c_ulong)]


def attribute(kind, value):
    memory = ctypes.create_string_buffer(value, len(value))
    return Attribute(kind, cast(memory, c_void_p), len(value))


def number(value):
    return value.to_bytes(8, sys.byteorder)


module, directory = sys.argv[1:]
functions = POINTER(c_void_p)()
print("C_GetFunctionList", ctypes.CDLL(module).C_GetFunctionList(byref(functions)))


def call(name, *arguments):
    function = ctypes.CFUNCTYPE(c_ulong, *(c_void_p if not isinstance(argument, int) else c_ulong for argument in arguments))
    rv = function(functions[FUNCTIONS[name] + 1])(*(cast(a, c_void_p) if not isinstance(a, int) else a for a in arguments))
    print(name, hex(rv))


def address(thing):
    return ctypes.pointer(thing)


def show(what, memory, length):
    print(what, bytes(memory[: length.value]).hex())


parameters = f"configdir='sql:{directory}' certPrefix='' keyPrefix='' secmod='secmod.db' flags=noModDB".encode()
arguments = InitializeArguments(flags=2, library_parameters=parameters)
call("C_Initialize", address(arguments))
slots, count, session, key = (c_ulong * 10)(), c_ulong(10), c_ulong(), c_ulong()
call("C_GetSlotList", 1, slots, address(count))
print(list(slots[: count.value]))
call("C_OpenSession", slots[0], CKF_SERIAL_SESSION, None, None, address(session))

note = b"Pay the bearer on demand."
result, length = (c_ubyte * 100)(), c_ulong(100)
call("C_DigestInit", session.value, address(Mechanism(CKM_SHA256)))
call("C_Digest", session.value, c_char_p(note), len(note), result, address(length))
show("digest", result, length)

template = (Attribute * 4)(
    attribute(CKA_CLASS, number(CKO_SECRET_KEY)),
    attribute(CKA_KEY_TYPE, number(CKK_GENERIC_SECRET)),
    attribute(CKA_SIGN, b"\1"),
    attribute(CKA_VALUE, b"a key of no importance"),
)
call("C_CreateObject", session.value, template, 4, address(key))
call("C_SignInit", session.value, address(Mechanism(CKM_SHA256_HMAC)), key.value)
length.value = 100
call("C_Sign", session.value, c_char_p(note), len(note), result, address(length))
show("signature", result, length)
call("C_Sign", session.value, c_char_p(note), len(note), result, address(length))
call("C_CloseSession", session.value)
call("C_Finalize", None)
