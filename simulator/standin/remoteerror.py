# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""D-Bus error replies."""

from gi.repository import Gio


class RemoteError(Exception):
    """A D-Bus error reply: its `name` and `message`. The name is None for an error of this side."""

    def __init__(self, error):
        """Takes a GLib.Error, which has the name mixed into its message."""
        self.name = Gio.DBusError.get_remote_error(error)
        self.message = error.message.removeprefix(f'GDBus.Error:{self.name}: ')
        super().__init__(f'{self.name}: {self.message}')
