/// The companion at rest, a picture.
PlimView {
    still: true
}
