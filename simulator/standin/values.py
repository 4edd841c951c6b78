# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Conversions of D-Bus values: levels of variants, and text for people."""

import dbus


def in_variant(value):
    """The same value with one more variant around it."""
    return _with_variants(value, value.variant_level + 1)


def out_of_variant(value):
    """The same value with one variant fewer around it."""
    return _with_variants(value, value.variant_level - 1)


def plain(value):
    """A value as text for people."""
    if isinstance(value, dbus.Boolean):
        return 'true' if value else 'false'
    if isinstance(value, str):
        return repr(str(value))
    if isinstance(value, dict):
        return '{' + ', '.join(f'{plain(key)}: {plain(item)}' for key, item in value.items()) + '}'
    if isinstance(value, tuple):
        return '(' + ', '.join(plain(item) for item in value) + ')'
    if isinstance(value, (list, bytes)):
        return '[' + ', '.join(plain(item) for item in value) + ']'
    return str(value)


def _with_variants(value, level):
    if isinstance(value, (dbus.Array, dbus.Dictionary, dbus.Struct)):
        return type(value)(value, signature=value.signature, variant_level=level)
    return type(value)(value, variant_level=level)
