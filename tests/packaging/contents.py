# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The files that are installed."""

import stat

LANGUAGES = (
    'ar', 'bg', 'bn', 'ca', 'cs', 'da', 'de', 'el', 'en_GB', 'es', 'et', 'fa', 'fi', 'fr', 'fr_CA', 'he', 'hi', 'hr', 'hu',
    'id', 'it', 'ja', 'ko', 'lt', 'lv', 'ms', 'nb', 'nl', 'pl', 'pt', 'pt_BR', 'ro', 'ru', 'sk', 'sl', 'sr', 'sv', 'th', 'tr',
    'uk', 'vi', 'zh_CN', 'zh_TW')

# The paths and permissions of all installed files.
INSTALLED = {
    'usr/bin/velmora-installationhandler': 0o755,
    'usr/bin/velmora-installctl': 0o755,
    'usr/lib/systemd/user/velmora-installationhandler.service': 0o644,
    'usr/share/applications/velmora-installctl.desktop': 0o644,
    'usr/share/bash-completion/completions/velmora-installctl': 0o644,
    'usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml': 0o644,
    'usr/share/dbus-1/services/org.velmoraos.installationhandler.service': 0o644,
    'usr/share/fish/vendor_completions.d/velmora-installctl.fish': 0o644,
    'usr/share/man/man1/velmora-installationhandler.1': 0o644,
    'usr/share/man/man1/velmora-installctl.1': 0o644,
    'usr/share/translations/velmora-installationhandler_eng_en.qm': 0o644,
    **{f'usr/share/translations/velmora-installationhandler-{language}.qm': 0o644 for language in LANGUAGES},
    'usr/share/translations/velmora-installctl_eng_en.qm': 0o644,
    **{f'usr/share/translations/velmora-installctl-{language}.qm': 0o644 for language in LANGUAGES},
    'usr/share/velmora-installationhandler/SideloadDialog.qml': 0o644,
    'usr/share/zsh/vendor-completions/_velmora-installctl': 0o644,
}


def found(stage):
    """The contents of a folder in the form of INSTALLED. Other files than regular ones show their type."""
    entries = {path.relative_to(stage): path.lstat().st_mode for path in stage.rglob('*')}
    return {str(path): stat.S_IMODE(mode) if stat.S_ISREG(mode) else oct(mode)
            for path, mode in entries.items() if not stat.S_ISDIR(mode)}


def naming(stage, folders):
    """The files that contain the path of one of the folders."""
    paths = [str(folder).encode() for folder in folders]
    return [str(path.relative_to(stage)) for path in stage.rglob('*')
            if path.is_file() and any(name in path.read_bytes() for name in paths)]
