# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service, as a model."""

from model.device import FILES

from .count import Count
from .dialog import Dialog
from .display import Display
from .installation import Installation
from .launcherremoval import LauncherRemoval
from .notification import Notification
from .packagefile import PackageFile
from .packagekit import PackageKit
from .queue import Queue
from .removals import Removals


class Service:
    """The parts of the service, and the beginning of each request."""

    def __init__(self, loop, trace, clock, device, peers):
        self.loop = loop
        self.trace = trace
        self.device = device
        self.peers = peers
        self.count = Count(trace, clock)
        self.dialog = Dialog(loop, peers, trace)
        self.display = Display(peers, self.dialog)
        self.queue = Queue(loop, self.count, self.dialog)
        self.count.queue = self.queue
        self.packagekit = PackageKit(loop, peers)
        self.removals = Removals(self)
        self.launcher_removal = LauncherRemoval(self)
        self.notification = Notification(peers, device.system_name)

    def install(self, request):
        files = [FILES[file] for file in request.files]
        if request.sdk_mode:
            yield from self._remove_installed(request.files, request.keep_userdata)
        yield from self.queue.add(Installation(self, files, request.sdk_mode))

    def _remove_installed(self, files, keep_userdata):
        """Reads the files by the strings that the caller has given."""
        for file in files:
            package = PackageFile(self.trace)
            package.read(file)
            yield from self.removals.remove([package.header.name], keep_userdata)

    def remove(self, request):
        yield from self.removals.remove(request.names, request.keep_userdata)

    def remove_launcher(self, request):
        yield from self.launcher_removal.remove(request.launcher)
