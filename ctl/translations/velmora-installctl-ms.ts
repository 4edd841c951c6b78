<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->
<TS version="2.1" language="ms">
<context>
    <name></name>
    <message id="installctl-blank-at-end">
        <source>with %1 a path must not end in a blank</source>
        <extracomment>%1 is the option --sdk</extracomment>
        <translation>dengan %1, laluan tidak boleh berakhir dengan ruang kosong</translation>
    </message>
    <message id="installctl-bus-lost">
        <source>the session bus went away before the service reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>bas sesi hilang sebelum perkhidmatan melaporkan hasil</translation>
    </message>
    <message id="installctl-bus-silent">
        <source>it has not answered within %1 s</source>
        <extracomment>The reason why there is no session bus</extracomment>
        <translation>bas tidak menjawab dalam masa %1 s</translation>
    </message>
    <message id="installctl-confirming">
        <source>waiting for your answer on the device&apos;s screen, then installing</source>
        <extracomment>The service asks the user in a dialog on the screen of the device, and then installs the package</extracomment>
        <translation>menunggu jawapan anda pada skrin peranti, kemudian menunggu pemasangan</translation>
    </message>
    <message id="installctl-declined">
        <source>declined</source>
        <extracomment>The user has declined the installation</extracomment>
        <translation>ditolak</translation>
    </message>
    <message id="installctl-failed">
        <source>failed</source>
        <extracomment>The reason follows</extracomment>
        <translation>gagal</translation>
    </message>
    <message id="installctl-forbidden">
        <source>forbidden</source>
        <extracomment>The device&apos;s policy forbids the installation</extracomment>
        <translation>dilarang</translation>
    </message>
    <message id="installctl-goes-on">
        <source>the service goes on</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>perkhidmatan terus berjalan</translation>
    </message>
    <message id="installctl-help-declined">
        <source>the user has declined</source>
        <extracomment>An exit status</extracomment>
        <translation>pengguna menolak</translation>
    </message>
    <message id="installctl-help-done">
        <source>done</source>
        <extracomment>An exit status</extracomment>
        <translation>selesai</translation>
    </message>
    <message id="installctl-help-failed">
        <source>something has failed</source>
        <extracomment>An exit status</extracomment>
        <translation>ada yang gagal</translation>
    </message>
    <message id="installctl-help-forbidden">
        <source>the device&apos;s policy forbids it</source>
        <extracomment>An exit status</extracomment>
        <translation>dasar peranti melarangnya</translation>
    </message>
    <message id="installctl-help-help">
        <source>print this text</source>
        <extracomment>An option</extracomment>
        <translation>cetak teks ini</translation>
    </message>
    <message id="installctl-help-interrupted">
        <source>interrupted by a signal; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>diganggu oleh isyarat; perkhidmatan terus berjalan</translation>
    </message>
    <message id="installctl-help-json">
        <source>print JSON objects, one a line</source>
        <extracomment>An option</extracomment>
        <translation>cetak objek JSON, satu setiap baris</translation>
    </message>
    <message id="installctl-help-keep-user-data">
        <source>keep the data of the application</source>
        <extracomment>An option</extracomment>
        <translation>kekalkan data aplikasi</translation>
    </message>
    <message id="installctl-help-launcher">
        <source>remove the application of a launcher</source>
        <extracomment>An option</extracomment>
        <translation>alih keluar aplikasi bagi sesuatu pelancar</translation>
    </message>
    <message id="installctl-help-no-wait">
        <source>do not wait for the outcome</source>
        <extracomment>An option</extracomment>
        <translation>jangan tunggu hasil</translation>
    </message>
    <message id="installctl-help-notify">
        <source>also show desktop notifications</source>
        <extracomment>An option</extracomment>
        <translation>tunjukkan juga pemberitahuan desktop</translation>
    </message>
    <message id="installctl-help-options">
        <source>Options:</source>
        <extracomment>A heading</extracomment>
        <translation>Pilihan:</translation>
    </message>
    <message id="installctl-help-problem">
        <source>a file cannot be used; nothing was requested</source>
        <extracomment>An exit status</extracomment>
        <translation>ada fail yang tidak dapat digunakan; tiada yang diminta</translation>
    </message>
    <message id="installctl-help-quiet">
        <source>print errors only</source>
        <extracomment>An option</extracomment>
        <translation>cetak ralat sahaja</translation>
    </message>
    <message id="installctl-help-sdk">
        <source>install in sdk mode, without a question if allowed</source>
        <extracomment>An option</extracomment>
        <translation>pasang dalam mod SDK, tanpa soalan jika dibenarkan</translation>
    </message>
    <message id="installctl-help-statuses">
        <source>Exit status:</source>
        <extracomment>A heading</extracomment>
        <translation>Status keluar:</translation>
    </message>
    <message id="installctl-help-timed-out">
        <source>the time is over; the service goes on</source>
        <extracomment>An exit status</extracomment>
        <translation>masa tamat; perkhidmatan terus berjalan</translation>
    </message>
    <message id="installctl-help-timeout">
        <source>wait no longer than this, 0 for no limit</source>
        <extracomment>An option</extracomment>
        <translation>jangan tunggu lebih lama daripada ini, 0 tanpa had</translation>
    </message>
    <message id="installctl-help-unavailable">
        <source>no session bus or no service</source>
        <extracomment>An exit status</extracomment>
        <translation>tiada bas sesi atau tiada perkhidmatan</translation>
    </message>
    <message id="installctl-help-unclear">
        <source>the outcome is not known, or may be that of another request</source>
        <extracomment>An exit status</extracomment>
        <translation>hasil tak diketahui, atau mungkin bagi permintaan lain</translation>
    </message>
    <message id="installctl-help-unprivileged">
        <source>the caller may not ask for this</source>
        <extracomment>An exit status</extracomment>
        <translation>pemanggil tidak dibenarkan meminta ini</translation>
    </message>
    <message id="installctl-help-unwritten">
        <source>done, but the output could not be written</source>
        <extracomment>An exit status</extracomment>
        <translation>selesai, tetapi output tidak dapat ditulis</translation>
    </message>
    <message id="installctl-help-usage">
        <source>bad command line</source>
        <extracomment>An exit status</extracomment>
        <translation>baris perintah salah</translation>
    </message>
    <message id="installctl-help-version">
        <source>print the version</source>
        <extracomment>An option</extracomment>
        <translation>cetak versi</translation>
    </message>
    <message id="installctl-installed">
        <source>installed</source>
        <extracomment>A package has been installed</extracomment>
        <translation>telah dipasang</translation>
    </message>
    <message id="installctl-installing">
        <source>installing</source>
        <extracomment>A package is being installed</extracomment>
        <translation>sedang dipasang</translation>
    </message>
    <message id="installctl-interrupted">
        <source>interrupted</source>
        <extracomment>After Ctrl-C</extracomment>
        <translation>diganggu</translation>
    </message>
    <message id="installctl-launcher-gone">
        <source>the launcher is gone, and the service has reported nothing</source>
        <extracomment>Why an application counts as removed; a launcher is a .desktop file</extracomment>
        <translation>pelancar sudah tiada, dan perkhidmatan tidak melaporkan apa-apa</translation>
    </message>
    <message id="installctl-launcher-there">
        <source>the service has reported nothing, and the launcher is still there</source>
        <extracomment>Why it is not known whether an application has been removed; a launcher is a .desktop file</extracomment>
        <translation>perkhidmatan tidak melaporkan apa-apa, dan pelancar masih ada</translation>
    </message>
    <message id="installctl-monitor-bus-lost">
        <source>the session bus went away</source>
        <extracomment>An error</extracomment>
        <translation>bas sesi hilang</translation>
    </message>
    <message id="installctl-no-bus">
        <source>no session bus: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>tiada bas sesi: %1</translation>
    </message>
    <message id="installctl-nonsense">
        <source>the service reported something that cannot be understood</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>perkhidmatan melaporkan sesuatu yang tidak dapat difahami</translation>
    </message>
    <message id="installctl-not-regular">
        <source>not a regular file</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>bukan fail biasa</translation>
    </message>
    <message id="installctl-not-started">
        <source>it has not started within %1 s</source>
        <extracomment>The reason why a service is not available</extracomment>
        <translation>perkhidmatan tidak bermula dalam masa %1 s</translation>
    </message>
    <message id="installctl-not-utf8">
        <source>the path is not UTF-8, so the service cannot be told</source>
        <extracomment>The path of a file</extracomment>
        <translation>laluan bukan UTF-8, maka tidak dapat disampaikan kepada perkhidmatan</translation>
    </message>
    <message id="installctl-notification-installed">
        <source>Installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Telah dipasang</translation>
    </message>
    <message id="installctl-notification-installing">
        <source>Installing…</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Memasang…</translation>
    </message>
    <message id="installctl-notification-not-installed">
        <source>Not installed</source>
        <extracomment>Title of a notification</extracomment>
        <translation>Tidak dipasang</translation>
    </message>
    <message id="installctl-notification-unknown">
        <source>Outcome not known</source>
        <extracomment>Title of a notification: nobody knows how the installation has ended or will end</extracomment>
        <translation>Hasil tidak diketahui</translation>
    </message>
    <message id="installctl-reading">
        <source>reading</source>
        <extracomment>The service reads a package file</extracomment>
        <translation>sedang dibaca</translation>
    </message>
    <message id="installctl-removed">
        <source>removed</source>
        <extracomment>A package has been removed</extracomment>
        <translation>telah dialih keluar</translation>
    </message>
    <message id="installctl-removing">
        <source>removing</source>
        <extracomment>A package is being removed</extracomment>
        <translation>sedang dialih keluar</translation>
    </message>
    <message id="installctl-removing-of">
        <source>removing %1 of %2</source>
        <extracomment>A package is being removed; %1 and %2 are numbers</extracomment>
        <translation>sedang dialih keluar, %1 daripada %2</translation>
    </message>
    <message id="installctl-requested">
        <source>requested</source>
        <extracomment>The service has taken a request</extracomment>
        <translation>telah diminta</translation>
    </message>
    <message id="installctl-see-help">
        <source>see %1</source>
        <extracomment>%1 is a command</extracomment>
        <translation>lihat %1</translation>
    </message>
    <message id="installctl-service-ended">
        <source>the service ended before it reported an outcome</source>
        <extracomment>Why it is not known how the request has ended</extracomment>
        <translation>perkhidmatan tamat sebelum melaporkan hasil</translation>
    </message>
    <message id="installctl-service-rests">
        <source>the service does not run</source>
        <extracomment>The service is not on the bus</extracomment>
        <translation>perkhidmatan tidak berjalan</translation>
    </message>
    <message id="installctl-service-runs">
        <source>the service runs</source>
        <extracomment>The service is on the bus</extracomment>
        <translation>perkhidmatan sedang berjalan</translation>
    </message>
    <message id="installctl-timeout">
        <source>timeout</source>
        <extracomment>The time is over</extracomment>
        <translation>masa tamat</translation>
    </message>
    <message id="installctl-unanswered">
        <source>no answer within %1 s; the service may go on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>tiada jawapan dalam masa %1 s; perkhidmatan mungkin terus berjalan</translation>
    </message>
    <message id="installctl-unavailable">
        <source>the service is not available: %1</source>
        <extracomment>%1 is the reason</extracomment>
        <translation>perkhidmatan tidak tersedia: %1</translation>
    </message>
    <message id="installctl-uncertain">
        <source>%1 (may be the outcome of another request)</source>
        <extracomment>%1 is the outcome of a request</extracomment>
        <translation>%1 (mungkin hasil permintaan lain)</translation>
    </message>
    <message id="installctl-unclear">
        <source>unclear</source>
        <extracomment>It is not known how the request has ended</extracomment>
        <translation>tidak jelas</translation>
    </message>
    <message id="installctl-unfinished">
        <source>no outcome within %1 s; the service goes on</source>
        <extracomment>The program waits no longer</extracomment>
        <translation>tiada hasil dalam masa %1 s; perkhidmatan terus berjalan</translation>
    </message>
    <message id="installctl-unprivileged">
        <source>unprivileged</source>
        <extracomment>The user may not ask for this</extracomment>
        <translation>tiada kebenaran</translation>
    </message>
    <message id="installctl-unrequested">
        <source>not requested: %1 of %2</source>
        <extracomment>%1 and %2 are numbers of files or packages</extracomment>
        <translation>%1 daripada %2 belum diminta</translation>
    </message>
    <message id="installctl-unwritten">
        <source>the output could not be written</source>
        <extracomment>An error</extracomment>
        <translation>output tidak dapat ditulis</translation>
    </message>
    <message id="installctl-usage-clash">
        <source>%1 does not go with %2</source>
        <extracomment>%1 is an option such as --sdk or another word of the command line, %2 an option or a command</extracomment>
        <translation>%1 tidak boleh digunakan dengan %2</translation>
    </message>
    <message id="installctl-usage-marked-name">
        <source>a name must not begin with the character %1</source>
        <extracomment>%1 is the code of a character</extracomment>
        <translation>nama tidak boleh bermula dengan aksara %1</translation>
    </message>
    <message id="installctl-usage-no-command">
        <source>a command is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>perintah tidak diberikan</translation>
    </message>
    <message id="installctl-usage-no-subject">
        <source>a file or a name is missing</source>
        <extracomment>An error in a command line</extracomment>
        <translation>fail atau nama tidak diberikan</translation>
    </message>
    <message id="installctl-usage-seconds">
        <source>%1 takes a whole number from 0 to %2</source>
        <extracomment>%1 is the option --timeout, %2 a number</extracomment>
        <translation>%1 memerlukan nombor bulat dari 0 hingga %2</translation>
    </message>
    <message id="installctl-usage-too-many-names">
        <source>with %1 no more than %2 names can be given</source>
        <extracomment>%1 is the option --no-wait, %2 a number</extracomment>
        <translation>dengan %1, paling banyak %2 nama boleh diberikan</translation>
    </message>
    <message id="installctl-usage-unknown-command">
        <source>there is no command %1</source>
        <extracomment>%1 is the word that was given</extracomment>
        <translation>tiada perintah %1</translation>
    </message>
    <message id="installctl-usage-wrong-name">
        <source>a name is empty or not UTF-8</source>
        <extracomment>An error in a command line</extracomment>
        <translation>ada nama yang kosong atau bukan UTF-8</translation>
    </message>
    <message id="installctl-waiting">
        <source>waiting for the service</source>
        <extracomment>The service has not answered, or does something else at the moment</extracomment>
        <translation>menunggu perkhidmatan</translation>
    </message>
    <message id="installctl-wrong-url">
        <source>not a URL of a file on this device</source>
        <extracomment>Why a file cannot be installed</extracomment>
        <translation>bukan URL fail pada peranti ini</translation>
    </message>
</context>
</TS>
