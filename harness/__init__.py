# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Helpers that start, call and watch the installed program, for its tests, the demo and the benchmark.

Put the project's folder and `simulator` on PYTHONPATH; then:

- `processes.Processes` starts programs, as root or in the session, and waits for what they do, with a deadline;
- `bus.Bus` is a bus of the device, `bus.PrivateBus` one that the caller starts;
- `busmonitor.BusMonitor` records what goes over a bus;
- `service.Service` is the installed program as a process, `client.Client` calls it, `signalrecorder.SignalRecorder`
  records its signals;
- `standins.StandIns` starts the stand-ins of the platform services;
- `usermanager.UserManager` is systemd's manager of the session's services, which starts a session bus and the service;
- `screen.Screen` is a display, and what a user does with the dialog on it; `weston.WestonScreen` is one with a Wayland
  compositor;
- `accessibility.AccessibilityBus` is where screen readers find the dialog.
"""
