<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="ko">
<context>
    <name></name>
    <message id="installationhandler-application_installation_disallowed">
        <source>This device&apos;s policy does not allow installing apps (%1).</source>
        <extracomment>Notification shown when the device&apos;s policy forbids the user to install applications %1 is the operating system&apos;s name</extracomment>
        <translation>이 기기의 정책(%1)에서 앱 설치를 허용하지 않습니다.</translation>
    </message>
    <message id="installationhandler-cancel">
        <source>Cancel</source>
        <extracomment>Button that closes the dialog without installing anything; as short as possible</extracomment>
        <translation>취소</translation>
    </message>
    <message id="installationhandler-hide-path">
        <source>Hide full path</source>
        <extracomment>Spoken by screen readers for the file&apos;s name, which can be pressed, while its whole path is shown</extracomment>
        <translation>전체 경로 숨기기</translation>
    </message>
    <message id="installationhandler-install">
        <source>Install</source>
        <extracomment>Button that starts the installation; as short as possible</extracomment>
        <translation>설치</translation>
    </message>
    <message id="installationhandler-install-question">
        <source>Install this app?</source>
        <extracomment>Heading of the dialog that asks whether a package file is to be installed</extracomment>
        <translation>이 앱을 설치하시겠습니까?</translation>
    </message>
    <message id="installationhandler-own-words">
        <source>In the app&apos;s own words:</source>
        <extracomment>Label of the summary that the package&apos;s author wrote, in contrast to the system&apos;s own words</extracomment>
        <translation>앱이 제공한 설명:</translation>
    </message>
    <message id="installationhandler-show-path">
        <source>Show full path</source>
        <extracomment>Spoken by screen readers for the file&apos;s name, which can be pressed, while its path is shortened</extracomment>
        <translation>전체 경로 보기</translation>
    </message>
    <message id="installationhandler-untrusted-source">
        <source>This app is not from the app store and has not been checked. It could harm your device or data. Install it only if you trust where you got it.</source>
        <extracomment>Warning above the details of a package that the user got elsewhere than in the app store</extracomment>
        <translation>이 앱은 앱 스토어에서 받은 것이 아니며 검사를 거치지 않았습니다. 기기나 데이터에 해를 끼칠 수 있습니다. 앱을 받은 곳을 신뢰하는 경우에만 설치하십시오.</translation>
    </message>
    <message id="installationhandler-user-aborted">
        <source>The user cancelled the installation</source>
        <extracomment>Outcome of an installation that the user declined in the confirmation dialog</extracomment>
        <translation>사용자가 설치를 취소했습니다</translation>
    </message>
    <message id="installationhandler-version">
        <source>Version %1</source>
        <extracomment>Version of the package %1 is the version</extracomment>
        <translation>버전 %1</translation>
    </message>
</context>
</TS>
