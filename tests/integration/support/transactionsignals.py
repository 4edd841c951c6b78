# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Signals of a PackageKit transaction, for the scripts of its stand-in, with PackageKit's own numbers."""

from gi.repository import GLib

INFO_INSTALLED = 1
STATUS_REMOVE = 6
EXIT_SUCCESS, EXIT_FAILED = 1, 2
ERROR_NOT_FOUND = 8


def package_found(package_id, summary='', info=INFO_INSTALLED):
    """A package, whose id is 'NAME;VERSION;ARCHITECTURE;installed'."""
    return 'Package', GLib.Variant('(uss)', (info, package_id, summary))


def packages_found(*package_ids):
    """Several packages in one signal."""
    return 'Packages', GLib.Variant('(a(uss))', ([(INFO_INSTALLED, package_id, '') for package_id in package_ids],))


def item_progress(package_id, percentage, status=STATUS_REMOVE):
    """The progress of one package; PackageKit itself says 101 when it does not know."""
    return 'ItemProgress', GLib.Variant('(suu)', (package_id, status, percentage))


def error_code(details, code=ERROR_NOT_FOUND):
    """A failure, after which the real PackageKit ends with EXIT_FAILED."""
    return 'ErrorCode', GLib.Variant('(us)', (code, details))


def finished(exit_status=EXIT_SUCCESS, runtime=0):
    """The end; the runtime is in milliseconds."""
    return 'Finished', GLib.Variant('(uu)', (exit_status, runtime))


def destroy():
    """The transaction is forgotten, which the real PackageKit says five seconds after the end."""
    return 'Destroy', GLib.Variant('()', ())
